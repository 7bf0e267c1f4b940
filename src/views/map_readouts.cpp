#include "views/map_readouts.hpp"

namespace aerix {

std::vector<platform::Point> OffsetCanvas::Shift(const std::vector<platform::Point>& points) const {
    std::vector<platform::Point> out(points);
    for (auto& p : out) {
        p.x += dx_;
        p.y += dy_;
    }
    return out;
}

void OffsetCanvas::Polyline(const std::vector<platform::Point>& points) {
    t_.Polyline(Shift(points));
}

void OffsetCanvas::Polygon(const std::vector<platform::Point>& points) {
    t_.Polygon(Shift(points));
}

platform::Canvas* CanvasReadouts::BeginLatLon() {
    current_ = std::make_unique<OffsetCanvas>(view_, 42, 44, 158, 16);
    return current_.get();
}

platform::Canvas* CanvasReadouts::BeginScale() {
    current_ = std::make_unique<OffsetCanvas>(view_, scale_.left, scale_.top, scale_.Width(),
                                              scale_.Height());
    return current_.get();
}

}  // namespace aerix
