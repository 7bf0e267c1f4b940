// Drawing straight into a bitmap's pixels where the chart generator needs exact, toolkit-free
// results: polygon fill and thin lines.
#pragma once

#include <functional>
#include <vector>

#include "platform/canvas.hpp"

namespace aerix {

struct PointF {
    double x = 0.0, y = 0.0;
};

// Fills the rings together by the even-odd rule (holes stay open), sampling pixel centres.
void FillRings(platform::Bitmap& bitmap, const std::vector<std::vector<PointF>>& rings,
               platform::Color color);
// A one-pixel line; dashed when dash > 0 (that many pixels on, as many off).
void DrawLine(platform::Bitmap& bitmap, PointF a, PointF b, platform::Color color, int dash = 0);
void DrawPolyline(platform::Bitmap& bitmap, const std::vector<PointF>& points,
                  platform::Color color, int dash = 0);

// A 24-bit BMP file of the bitmap; false when it cannot be written.
bool WriteBmp(const std::string& path, const platform::Bitmap& bitmap);

}  // namespace aerix
