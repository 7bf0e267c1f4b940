#include "platform/canvas.hpp"

namespace aerix::platform {

namespace {
std::uint32_t Pack(Color c) {
    return (c.r << 16) | (c.g << 8) | c.b;
}
}  // namespace

Bitmap::Bitmap(int width, int height, Color fill)
    : width_(width > 0 ? width : 0),
      height_(height > 0 ? height : 0),
      pixels_(static_cast<std::size_t>(width_) * height_, Pack(fill)) {}

Color Bitmap::Pixel(int x, int y) const {
    if (x < 0 || y < 0 || x >= width_ || y >= height_)
        return kBlack;
    std::uint32_t p = Row(y)[x];
    return Rgb(static_cast<std::uint8_t>(p >> 16), static_cast<std::uint8_t>(p >> 8),
               static_cast<std::uint8_t>(p));
}

void Bitmap::SetPixel(int x, int y, Color c) {
    if (x < 0 || y < 0 || x >= width_ || y >= height_)
        return;
    Row(y)[x] = Pack(c);
}

}  // namespace aerix::platform
