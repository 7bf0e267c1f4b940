// The HSI: a track-up compass card with the course deviation indicator and the bearing pointer
// over a moving map of the nearby waypoints, airspace and route; readouts in the corners.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "views/instrument_parts.hpp"

namespace aerix {

using platform::Canvas;
using platform::Rgb;

namespace {

constexpr platform::Color kBezel = Rgb(52, 54, 58);
constexpr platform::Color kLabel = Rgb(150, 200, 150);
constexpr platform::Color kValue = platform::kWhite;
constexpr double kCardRadius = 100.0;

CardStyle HsiStyle() {
    CardStyle s;
    s.scale = 1.0;
    s.background = kBezel;
    s.face = platform::kBlack;
    s.marks = platform::kWhite;
    s.course = Rgb(255, 200, 0);
    s.route = Rgb(255, 0, 255);
    s.active = s.route;
    s.aircraft = Rgb(255, 140, 0);
    return s;
}

// A small label over its value, in a corner of the bezel.
void Corner(Canvas& c, int left, int top, unsigned align, const char* label,
            const std::string& value) {
    c.SetFont({9, false});
    c.DrawText(label, {left, top, left + 72, top + 10}, align | platform::kTextSingleLine, kLabel,
               kBezel, true);
    c.SetFont({12, true});
    c.DrawText(value, {left, top + 9, left + 72, top + 24}, align | platform::kTextSingleLine,
               kValue, kBezel, true);
}

}  // namespace

void DrawHsiPicture(Canvas& c, const InstrumentFrameInput& in) {
    const CardStyle style = HsiStyle();
    c.FillRect({0, 0, c.Width(), c.Height()}, kBezel);
    const double range = kRangePerStepNm * std::max<std::uint32_t>(in.rangeStep, 1);
    CardGeometry g = MakeCardGeometry(in.centreX, in.centreY, kCardRadius, range, in.fix.latitude,
                                      in.fix.longitude, in.fix.trueTrack, in.fix.magneticTrack);
    c.SetPen({platform::PenStyle::Null, 0, style.face});
    c.SetBrush({false, style.face});
    c.Ellipse({in.centreX - 100, in.centreY - 100, in.centreX + 101, in.centreY + 101});
    DrawRangeRing(c, g, style);
    DrawMapLayer(c, g, style, in);
    DrawCompassCard(c, g, style);
    DrawBearingPointer(c, g, style, in.leg);
    DrawCourseDeviation(c, g, style, in.leg);
    DrawAircraft(c, g, style);

    // The track in a box over the lubber mark.
    const int cx = in.centreX;
    c.SetPen({platform::PenStyle::Solid, 1, platform::kWhite});
    c.SetBrush({false, platform::kBlack});
    c.Rectangle({cx - 27, 2, cx + 27, 22});
    c.SetFont({14, true});
    c.DrawText(DirectionText(in.fix.trueTrack, in.leg.reference, in.haveFix),
               {cx - 26, 3, cx + 26, 21},
               platform::kTextCenter | platform::kTextVCenter | platform::kTextSingleLine, kValue,
               platform::kBlack, true);
    c.SetPen({});
    c.SetBrush({});

    const bool leg = in.leg.valid && in.haveFix;
    char speed[16];
    std::snprintf(speed, sizeof speed, "%d kt", static_cast<int>(std::lround(in.fix.groundSpeed)));
    Corner(c, 3, 1, platform::kTextLeft, "GS", in.haveFix ? speed : "---");
    Corner(c, 165, 1, platform::kTextRight, "DIS nm", DistanceText(in.leg.bar.distance, leg));
    Corner(c, 3, 229, platform::kTextLeft, "DTK",
           DirectionText(in.leg.course, in.leg.reference, in.leg.valid));
    Corner(c, 165, 229, platform::kTextRight, "ETE",
           EteText(in.leg.bar.distance, in.fix.groundSpeed, leg));
    if (in.showScale) {
        c.SetFont({10, true});
        // Below the card, unless the position readout is there: then at the card's foot.
        const int top = in.showLatLon ? 222 : 239;
        c.DrawText(ScaleReadoutText(in.rangeStep), {cx - 30, top, cx + 30, top + 14},
                   platform::kTextCenter | platform::kTextVCenter | platform::kTextSingleLine,
                   kReadoutText, kReadoutBack, false);
    }
}

}  // namespace aerix
