// The AERIX view: a glass-cockpit navigation display. A dark, track-up compass rose with the
// magenta course and route, waypoints and airspace, the waypoint being flown in the top right;
// under the picture, crisp boxes with ground speed, track, desired track, distance, time and
// cross-track error.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "views/instrument_parts.hpp"

namespace aerix {

using platform::Canvas;
using platform::Rgb;

namespace {

constexpr platform::Color kScreen = Rgb(8, 10, 16);
constexpr platform::Color kLabel = Rgb(90, 220, 90);
constexpr platform::Color kMagenta = Rgb(255, 60, 255);
constexpr platform::Color kBoxEdge = Rgb(70, 74, 84);
constexpr double kPictureScale = 430.0 / 240.0;
constexpr double kRoseRadius = 146.0;

CardStyle AerixStyle() {
    CardStyle s;
    s.scale = kPictureScale;
    s.background = kScreen;
    s.face = kScreen;
    s.marks = platform::kWhite;
    s.course = kMagenta;
    // As on a glass cockpit: the leg being flown magenta, the rest of the route white.
    s.route = Rgb(225, 225, 225);
    s.active = kMagenta;
    s.aircraft = Rgb(255, 230, 0);
    return s;
}

constexpr unsigned kLine = platform::kTextSingleLine | platform::kTextVCenter;

// One readout box of the panel: a green label on the left, the figure on the right.
void Box(Canvas& c, platform::Rect r, const char* label, const std::string& value,
         platform::Color valueColor = platform::kWhite) {
    c.SetPen({platform::PenStyle::Solid, 1, kBoxEdge});
    c.SetBrush({false, platform::kBlack});
    c.Rectangle(r);
    c.SetFont({9, true});
    c.DrawText(label, {r.left + 3, r.top, r.right, r.bottom}, platform::kTextLeft | kLine, kLabel,
               platform::kBlack, true);
    c.SetFont({12, true});
    c.DrawText(value, {r.left, r.top, r.right - 3, r.bottom}, platform::kTextRight | kLine,
               valueColor, platform::kBlack, true);
}

}  // namespace

void DrawAerixPicture(Canvas& c, const InstrumentFrameInput& in) {
    const CardStyle style = AerixStyle();
    c.FillRect({0, 0, c.Width(), c.Height()}, kScreen);
    const double range = kRangePerStepNm * std::max<std::uint32_t>(in.rangeStep, 1);
    CardGeometry g = MakeCardGeometry(in.centreX, in.centreY, kRoseRadius, range, in.fix.latitude,
                                      in.fix.longitude, in.fix.trueTrack, in.fix.magneticTrack);
    DrawRangeRing(c, g, style);
    DrawMapLayer(c, g, style, in);
    DrawCompassCard(c, g, style);
    DrawBearingPointer(c, g, style, in.leg);
    DrawCourseDeviation(c, g, style, in.leg);
    DrawAircraft(c, g, style);

    auto s = [&](double v) { return Scaled(style, v); };
    const int cx = in.centreX;
    // Track box over the lubber mark, "TRK" beside it; the figure carries its reference.
    c.SetPen({platform::PenStyle::Solid, s(1), platform::kWhite});
    c.SetBrush({false, platform::kBlack});
    c.Rectangle({cx - s(28), s(2), cx + s(28), s(19)});
    c.SetFont({s(14), true});
    c.DrawText(DirectionText(in.fix.trueTrack, in.leg.reference, in.haveFix),
               {cx - s(28), s(2), cx + s(28), s(19)}, platform::kTextCenter | kLine,
               platform::kWhite, platform::kBlack, true);
    c.SetFont({s(10), true});
    c.DrawText("TRK", {cx - s(66), s(2), cx - s(31), s(19)}, platform::kTextRight | kLine, kLabel,
               kScreen, true);

    // The waypoint being flown, top right: ident, distance, time.
    const int right = c.Width() - s(3);
    if (in.leg.valid) {
        c.SetFont({s(12), true});
        std::string name = Utf16ToUtf8(in.leg.bar.name.substr(0, 8));
        c.DrawText(name, {right - s(80), s(2), right, s(16)}, platform::kTextRight | kLine,
                   kMagenta, kScreen, true);
        c.SetFont({s(10), true});
        const bool flying = in.haveFix;
        c.DrawText(DistanceText(in.leg.bar.distance, flying) + " NM",
                   {right - s(80), s(16), right, s(29)}, platform::kTextRight | kLine,
                   platform::kWhite, kScreen, true);
        c.DrawText(EteText(in.leg.bar.distance, in.fix.groundSpeed, flying),
                   {right - s(80), s(29), right, s(42)}, platform::kTextRight | kLine,
                   platform::kWhite, kScreen, true);
    }
    if (in.showScale) {
        c.SetFont({s(10), true});
        const int bottom = c.Height() - s(3);
        c.DrawText(ScaleReadoutText(in.rangeStep), {right - s(60), bottom - s(14), right, bottom},
                   platform::kTextCenter | kLine, kReadoutText, kReadoutBack, false);
    }
    c.SetPen({});
    c.SetBrush({});
}

void DrawAerixPanel(Canvas& c, const InstrumentFrameInput& in) {
    const int top = 215;
    c.FillRect({0, top, 240, 254}, platform::kBlack);
    const bool fix = in.haveFix;
    const bool leg = in.leg.valid && fix;
    char speed[16];
    std::snprintf(speed, sizeof speed, "%d", static_cast<int>(std::lround(in.fix.groundSpeed)));
    Box(c, {0, top, 80, top + 19}, "GS", fix ? speed : "---");
    Box(c, {80, top, 160, top + 19}, "TRK", DirectionText(in.fix.trueTrack, in.leg.reference, fix));
    Box(c, {160, top, 240, top + 19}, "DTK",
        DirectionText(in.leg.course, in.leg.reference, in.leg.valid), kMagenta);
    Box(c, {0, top + 19, 80, top + 38}, "DIS", DistanceText(in.leg.bar.distance, leg));
    Box(c, {80, top + 19, 160, top + 38}, "ETE",
        EteText(in.leg.bar.distance, in.fix.groundSpeed, leg));
    Box(c, {160, top + 19, 240, top + 38}, "XTK", CrossTrackText(CrossTrackNm(in.leg), leg));
    c.SetPen({});
    c.SetBrush({});
}

}  // namespace aerix
