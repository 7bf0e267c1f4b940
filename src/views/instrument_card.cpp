// The instruments' compass card, course deviation indicator, bearing pointer and aircraft.
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "gps/nav_math.hpp"
#include "platform/numeric.hpp"
#include "views/instrument_parts.hpp"

namespace aerix {

using platform::Canvas;
using platform::Point;
using platform::Rgb;

namespace {

constexpr platform::Color kDotColor = Rgb(235, 235, 235);
constexpr platform::Color kRingColor = Rgb(110, 110, 120);

const char* CardFigure(int degrees) {
    static const char* const kFigures[] = {"N", "3",  "6",  "E", "12", "15",
                                           "S", "21", "24", "W", "30", "33"};
    return kFigures[(degrees / 30) % 12];
}

Point Along(const CardGeometry& g, double angle, double r, double sideways) {
    PointF p = g.At(angle, r);
    const double a = angle * kDegreesToRadians;
    return ToPixel({p.x + sideways * std::cos(a), p.y + sideways * std::sin(a)});
}

}  // namespace

int Scaled(const CardStyle& style, double pixels) {
    return static_cast<int>(std::lround(pixels * style.scale));
}

void DrawRangeRing(Canvas& c, const CardGeometry& g, const CardStyle& style) {
    const double r = g.radius / 2;
    c.SetPen({platform::PenStyle::Dot, Scaled(style, 1), kRingColor});
    c.SetBrush({true, platform::kWhite});
    Point tl = ToPixel({g.cx - r, g.cy - r});
    Point br = ToPixel({g.cx + r, g.cy + r});
    c.Ellipse({tl.x, tl.y, br.x, br.y});
    char text[16];
    double half = g.rangeNm / 2;
    if (half == std::floor(half))
        std::snprintf(text, sizeof text, "%d", TruncInt32(half));
    else
        std::snprintf(text, sizeof text, "%.1f", half);
    // Beside the ring, to the lower left where the pointers seldom are.
    Point at = ToPixel(g.At(225, r));
    c.SetFont({Scaled(style, 9), false});
    c.DrawText(text,
               {at.x - Scaled(style, 24), at.y - Scaled(style, 4), at.x - Scaled(style, 2),
                at.y + Scaled(style, 8)},
               platform::kTextRight | platform::kTextSingleLine, kRingColor, style.face, true);
    c.SetPen({});
    c.SetBrush({});
}

void DrawCompassCard(Canvas& c, const CardGeometry& g, const CardStyle& style) {
    c.SetPen({platform::PenStyle::Solid, Scaled(style, 1), style.marks});
    c.SetBrush({true, platform::kWhite});
    Point tl = ToPixel({g.cx - g.radius, g.cy - g.radius});
    Point br = ToPixel({g.cx + g.radius, g.cy + g.radius});
    c.Ellipse({tl.x, tl.y, br.x, br.y});
    for (int deg = 0; deg < 360; deg += 5) {
        const double a = g.AngleOfMagnetic(deg);
        const double len = deg % 10 == 0 ? 9 * style.scale : 5 * style.scale;
        Point outer = ToPixel(g.At(a, g.radius));
        Point inner = ToPixel(g.At(a, g.radius - len));
        c.Polyline({outer, inner});
    }
    // The figures sit on the card's own colour: the map beneath never blurs them.
    c.SetFont({Scaled(style, 11), true});
    for (int deg = 0; deg < 360; deg += 30) {
        const char* figure = CardFigure(deg);
        const int half = Scaled(style, figure[1] ? 8 : 5);
        const int halfHeight = Scaled(style, 7);
        Point p = ToPixel(g.At(g.AngleOfMagnetic(deg), g.radius - 20 * style.scale));
        c.DrawText(figure, {p.x - half, p.y - halfHeight, p.x + half, p.y + halfHeight},
                   platform::kTextCenter | platform::kTextVCenter | platform::kTextSingleLine,
                   style.marks, style.face, false);
    }
    // The lubber mark: the track is read where it points.
    const int top = static_cast<int>(std::lround(g.cy - g.radius));
    const int cx = static_cast<int>(std::lround(g.cx));
    const int w = Scaled(style, 6);
    c.SetBrush({false, style.marks});
    c.Polygon({{cx - w, top - Scaled(style, 10)}, {cx + w, top - Scaled(style, 10)}, {cx, top}});
    c.SetPen({});
    c.SetBrush({});
}

void DrawCourseDeviation(Canvas& c, const CardGeometry& g, const CardStyle& style,
                         const ActiveLeg& leg) {
    if (!leg.valid)
        return;
    const double a = g.AngleOfTrue(leg.course);
    const double r = g.radius;
    const double spacing = r * 0.14;
    // The dots across the course, 5 a side.
    c.SetPen({platform::PenStyle::Solid, Scaled(style, 1), kDotColor});
    c.SetBrush({true, platform::kWhite});
    const int dot = Scaled(style, 2.5);
    for (int k = -5; k <= 5; ++k) {
        if (k == 0)
            continue;
        Point p = Along(g, a, 0, k * spacing);
        c.Ellipse({p.x - dot, p.y - dot, p.x + dot + 1, p.y + dot + 1});
    }
    c.SetPen({platform::PenStyle::Solid, Scaled(style, 3), style.course});
    c.SetBrush({false, style.course});
    // Head and tail of the course pointer.
    c.Polyline({Along(g, a, r * 0.5, 0), Along(g, a, r - 16 * style.scale, 0)});
    const double head = 8 * style.scale;
    c.Polygon({Along(g, a, r - 4 * style.scale, 0), Along(g, a, r - 18 * style.scale, -head / 1.4),
               Along(g, a, r - 18 * style.scale, head / 1.4)});
    c.Polyline({Along(g, a, -r * 0.5, 0), Along(g, a, -(r - 6 * style.scale), 0)});
    // The deviation bar, off to the side the course line lies.
    const double off = DeviationDots(CrossTrackNm(leg)) * spacing;
    c.Polyline({Along(g, a, r * 0.44, off), Along(g, a, -r * 0.44, off)});
    // TO or FROM: a triangle pointing along the course or back.
    const double sense = leg.bar.ahead ? 1.0 : -1.0;
    const double at = r * 0.3 * sense;
    c.SetPen({platform::PenStyle::Solid, Scaled(style, 1), style.course});
    c.Polygon({Along(g, a, at + sense * head, 0), Along(g, a, at, -head * 0.8),
               Along(g, a, at, head * 0.8)});
    c.SetPen({});
    c.SetBrush({});
}

void DrawBearingPointer(Canvas& c, const CardGeometry& g, const CardStyle& style,
                        const ActiveLeg& leg) {
    if (!leg.valid)
        return;
    const double a = g.AngleOfTrue(leg.bar.bearing);
    const double r = g.radius;
    c.SetPen({platform::PenStyle::Solid, Scaled(style, 1), kBearingColor});
    c.SetBrush({false, kBearingColor});
    // A needle through the card with its head on the rim, pointing at the waypoint.
    c.Polyline({Along(g, a, -(r - 2 * style.scale), 0), Along(g, a, r - 14 * style.scale, 0)});
    const double w = 6 * style.scale;
    c.Polygon({Along(g, a, r - 1 * style.scale, 0), Along(g, a, r - 15 * style.scale, -w),
               Along(g, a, r - 15 * style.scale, w)});
    c.SetPen({});
    c.SetBrush({});
}

void DrawAircraft(Canvas& c, const CardGeometry& g, const CardStyle& style) {
    const int x = static_cast<int>(std::lround(g.cx));
    const int y = static_cast<int>(std::lround(g.cy));
    auto s = [&](double v) { return Scaled(style, v); };
    // Nose up: fuselage, wings and tailplane in one outline.
    c.SetPen({platform::PenStyle::Solid, 1, platform::kBlack});
    c.SetBrush({false, style.aircraft});
    c.Polygon({{x, y - s(11)},
               {x + s(2), y - s(7)},
               {x + s(2), y - s(3)},
               {x + s(11), y + s(1)},
               {x + s(11), y + s(3)},
               {x + s(2), y + s(2)},
               {x + s(2), y + s(7)},
               {x + s(5), y + s(10)},
               {x + s(5), y + s(11)},
               {x - s(5), y + s(11)},
               {x - s(5), y + s(10)},
               {x - s(2), y + s(7)},
               {x - s(2), y + s(2)},
               {x - s(11), y + s(3)},
               {x - s(11), y + s(1)},
               {x - s(2), y - s(3)},
               {x - s(2), y - s(7)}});
    c.SetPen({});
    c.SetBrush({});
}

std::string DistanceText(double nm, bool valid) {
    if (!valid)
        return "---";
    char text[24];
    if (nm < 100)
        std::snprintf(text, sizeof text, "%.1f", nm);
    else
        std::snprintf(text, sizeof text, "%d", TruncInt32(std::lround(nm)));
    return text;
}

std::string EteText(double nm, double knots, bool valid) {
    // Below a walking pace there is no sensible time.
    if (!valid || knots < 1.0)
        return "--:--";
    double minutes = nm / knots * 60.0;
    if (minutes >= 100 * 60)
        return "--:--";
    int total = TruncInt32(std::lround(minutes));
    char text[16];
    std::snprintf(text, sizeof text, "%d:%02d", total / 60, total % 60);
    return text;
}

std::string CrossTrackText(double nm, bool valid) {
    if (!valid)
        return "---";
    char text[24];
    double off = std::fabs(nm);
    if (off < 0.05)
        return "0.0";
    if (off < 100)
        std::snprintf(text, sizeof text, "%c %.1f", nm > 0 ? 'R' : 'L', off);
    else
        std::snprintf(text, sizeof text, "%c %d", nm > 0 ? 'R' : 'L', TruncInt32(std::lround(off)));
    return text;
}

}  // namespace aerix
