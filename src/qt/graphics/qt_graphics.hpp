// Graphics for the views on Qt: canvases over bitmaps and image files. Works headless under the
// offscreen platform, so aerix-tool can render with it too.
#pragma once

#include "platform/canvas.hpp"

namespace aerix::qt {

class QtGraphics : public platform::Graphics {
  public:
    // Images larger than this many pixels are refused (a chart that would not fit in memory).
    static constexpr long long kMaxPixels = 64LL * 1024 * 1024;

    std::unique_ptr<platform::Canvas> CanvasOn(platform::Bitmap& bitmap) override;
    bool LoadImage(const std::string& path, platform::Bitmap* out, std::string* error) override;
    bool SaveImage(const std::string& path, const platform::Bitmap& bitmap) override;
};

}  // namespace aerix::qt
