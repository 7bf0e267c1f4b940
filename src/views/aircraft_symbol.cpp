// The aircraft: a cross that flashes from fix to fix, with a track pointer whose length grows
// with ground speed.
#include <algorithm>
#include <cmath>

#include "gps/nav_math.hpp"
#include "platform/numeric.hpp"
#include "views/map_view.hpp"

namespace aerix {

using platform::Point;

namespace {
constexpr platform::Color kCyan = platform::Rgb(0, 255, 255);

// The cross stays within the chart rows.
int ClampRow(int y) {
    return std::clamp(y, 14, 252);
}

Point Polar(int x, int y, double length, double degrees) {
    double radians = degrees * kDegreesToRadians;
    return {TruncInt32(x + length * std::cos(radians)), TruncInt32(y + length * std::sin(radians))};
}
}  // namespace

void DrawAircraftSymbol(platform::Canvas& canvas, ViewState& view, const SettingsState& settings,
                        const GpsFix& fix) {
    view.SymbolBlink ^= 1;
    canvas.SetPen({platform::PenStyle::Solid, 0, kCyan});
    canvas.SetBrush({false, view.SymbolBlink == 1 ? platform::kWhite : platform::kBlack});
    const int x = view.AircraftScreenX;
    const int y = view.AircraftScreenY;
    static constexpr int kCross[13][2] = {{-1, 6},  {3, 6},   {3, 12},  {9, 12},  {9, 16},
                                          {3, 16},  {3, 22},  {-1, 22}, {-1, 16}, {-7, 16},
                                          {-7, 12}, {-1, 12}, {-1, 6}};
    std::vector<Point> cross;
    cross.reserve(13);
    for (const auto& p : kCross)
        cross.push_back({x + p[0], ClampRow(y + p[1])});
    canvas.Polygon(cross);

    const double speed = fix.groundSpeed;
    if (speed > 10.0 && settings.ShowTrackPointer == 1) {
        const double length = speed * 0.47619047619047616;
        const int theta = TruncInt32(fix.trueTrack - 90);
        const int half = speed < 71 ? 11 : speed < 121 ? 7 : 4;
        const int cy = y + 14;
        Point tip = Polar(x, cy, length, theta);
        canvas.MoveTo(x, cy);
        canvas.LineTo(tip.x, tip.y);
        canvas.Polygon({tip, Polar(x, cy, length - 10, theta - half),
                        Polar(x, cy, length - 10, theta + half)});
    }
    canvas.SetPen({});
    canvas.SetBrush({});
}

}  // namespace aerix
