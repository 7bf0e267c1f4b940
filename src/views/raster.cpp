#include "views/raster.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>

namespace aerix {

void FillRings(platform::Bitmap& bitmap, const std::vector<std::vector<PointF>>& rings,
               platform::Color color) {
    const int h = bitmap.Height();
    const int w = bitmap.Width();
    // Crossings per row, gathered edge by edge: only the rows an edge spans are visited.
    std::vector<std::vector<double>> crossings(static_cast<std::size_t>(h));
    for (const auto& ring : rings) {
        const std::size_t n = ring.size();
        for (std::size_t i = 0; i < n; ++i) {
            PointF a = ring[i];
            PointF b = ring[(i + 1) % n];
            if (a.y == b.y)
                continue;
            if (a.y > b.y)
                std::swap(a, b);
            // Rows whose centre y + 0.5 lies in [a.y, b.y).
            int first = std::max(0, static_cast<int>(std::ceil(a.y - 0.5)));
            int last = std::min(h - 1, static_cast<int>(std::ceil(b.y - 0.5)) - 1);
            for (int y = first; y <= last; ++y) {
                double cy = y + 0.5;
                crossings[static_cast<std::size_t>(y)].push_back(a.x + (cy - a.y) * (b.x - a.x) /
                                                                           (b.y - a.y));
            }
        }
    }
    for (int y = 0; y < h; ++y) {
        auto& xs = crossings[static_cast<std::size_t>(y)];
        std::sort(xs.begin(), xs.end());
        for (std::size_t i = 0; i + 1 < xs.size(); i += 2) {
            int from = std::max(0, static_cast<int>(std::ceil(xs[i] - 0.5)));
            int to = std::min(w - 1, static_cast<int>(std::ceil(xs[i + 1] - 0.5)) - 1);
            for (int x = from; x <= to; ++x)
                bitmap.SetPixel(x, y, color);
        }
    }
}

void DrawLine(platform::Bitmap& bitmap, PointF a, PointF b, platform::Color color, int dash) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double steps = std::ceil(std::max(std::fabs(dx), std::fabs(dy)));
    // Lines far outside the bitmap are not walked pixel by pixel.
    const double w = bitmap.Width(), h = bitmap.Height();
    if ((a.x < 0 && b.x < 0) || (a.y < 0 && b.y < 0) || (a.x >= w && b.x >= w) ||
        (a.y >= h && b.y >= h) || steps > 4 * (w + h))
        return;
    for (int i = 0; i <= static_cast<int>(steps); ++i) {
        if (dash > 0 && (i / dash) % 2 == 1)
            continue;
        double t = steps > 0 ? i / steps : 0.0;
        bitmap.SetPixel(static_cast<int>(std::floor(a.x + dx * t)),
                        static_cast<int>(std::floor(a.y + dy * t)), color);
    }
}

void DrawPolyline(platform::Bitmap& bitmap, const std::vector<PointF>& points,
                  platform::Color color, int dash) {
    for (std::size_t i = 1; i < points.size(); ++i)
        DrawLine(bitmap, points[i - 1], points[i], color, dash);
}

bool WriteBmp(const std::string& path, const platform::Bitmap& bitmap) {
    const int w = bitmap.Width();
    const int h = bitmap.Height();
    const std::uint32_t rowBytes = (static_cast<std::uint32_t>(w) * 3 + 3) & ~3u;
    const std::uint32_t imageBytes = rowBytes * static_cast<std::uint32_t>(h);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out)
        return false;
    auto put16 = [&](std::uint16_t v) {
        char b[2] = {static_cast<char>(v), static_cast<char>(v >> 8)};
        out.write(b, 2);
    };
    auto put32 = [&](std::uint32_t v) {
        char b[4] = {static_cast<char>(v), static_cast<char>(v >> 8), static_cast<char>(v >> 16),
                     static_cast<char>(v >> 24)};
        out.write(b, 4);
    };
    out.write("BM", 2);
    put32(54 + imageBytes);
    put32(0);
    put32(54);
    put32(40);
    put32(static_cast<std::uint32_t>(w));
    put32(static_cast<std::uint32_t>(h));  // bottom-up rows
    put16(1);
    put16(24);
    put32(0);
    put32(imageBytes);
    put32(2835);
    put32(2835);
    put32(0);
    put32(0);
    std::vector<char> row(rowBytes, 0);
    for (int y = h - 1; y >= 0; --y) {
        const std::uint32_t* src = bitmap.Row(y);
        for (int x = 0; x < w; ++x) {
            row[static_cast<std::size_t>(x) * 3 + 0] = static_cast<char>(src[x]);
            row[static_cast<std::size_t>(x) * 3 + 1] = static_cast<char>(src[x] >> 8);
            row[static_cast<std::size_t>(x) * 3 + 2] = static_cast<char>(src[x] >> 16);
        }
        out.write(row.data(), static_cast<std::streamsize>(rowBytes));
    }
    // The last bytes reach the file only on close: a full disk shows there.
    out.close();
    return !out.fail();
}

}  // namespace aerix
