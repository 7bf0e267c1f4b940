// The instruments' moving-map layer: airspace outlines, the plan route and the nearby waypoints.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "gps/nav_math.hpp"
#include "views/instrument_parts.hpp"

namespace aerix {

using platform::Canvas;
using platform::Color;
using platform::Point;
using platform::Rgb;

namespace {

constexpr Color kAirfieldColor = Rgb(0, 220, 255);
constexpr Color kNavaidColor = Rgb(80, 230, 80);
constexpr Color kFixColor = Rgb(230, 230, 230);
// Nearest first, so the picture stays legible at the widest range over a dense database.
constexpr std::size_t kMaxWaypointsDrawn = 60;
// Stop requests are looked at every so many entries.
constexpr std::size_t kStopCheckEvery = 4096;

enum Outcode : unsigned { kLeftOf = 1, kRightOf = 2, kAbove = 4, kBelow = 8 };

unsigned OutcodeOf(const CardGeometry& g, PointF p) {
    unsigned code = 0;
    if (p.x < g.cx - g.radius)
        code |= kLeftOf;
    if (p.x > g.cx + g.radius)
        code |= kRightOf;
    if (p.y < g.cy - g.radius)
        code |= kAbove;
    if (p.y > g.cy + g.radius)
        code |= kBelow;
    return code;
}

// A segment wholly off one side of the card cannot cross it.
bool SegmentMaySeeCard(const CardGeometry& g, PointF a, PointF b) {
    return (OutcodeOf(g, a) & OutcodeOf(g, b)) == 0;
}

bool InsideCard(const CardGeometry& g, PointF p) {
    return std::hypot(p.x - g.cx, p.y - g.cy) <= g.radius;
}

// A ring of this radius around centre crosses the card.
bool RingMaySeeCard(const CardGeometry& g, PointF centre, double radius) {
    double d = std::hypot(centre.x - g.cx, centre.y - g.cy);
    return d - radius <= g.radius && radius - d <= g.radius;
}

platform::Rect SquareAround(PointF centre, double radius) {
    Point tl = ToPixel({centre.x - radius, centre.y - radius});
    Point br = ToPixel({centre.x + radius, centre.y + radius});
    return {tl.x, tl.y, br.x, br.y};
}

void DrawAirspace(Canvas& c, const CardGeometry& g, const CardStyle& style,
                  std::span<const AirspaceEntry> airspace, const std::stop_token& stop) {
    c.SetPen({platform::PenStyle::Solid, Scaled(style, 1), kAirspaceColor});
    c.SetBrush({true, platform::kWhite});
    c.SetFont({Scaled(style, 9), false});
    const double k = g.PixelsPerNm();
    PointF previous;
    bool havePrevious = false;
    for (std::size_t i = 0; i < airspace.size(); ++i) {
        if (i % kStopCheckEvery == 0 && stop.stop_requested())
            return;
        const AirspaceEntry& e = airspace[i];
        const std::u16string_view key = e.keyword.view();
        PointF p = g.Project(e.latitude, e.longitude);
        if (key == u"GLINETO") {
            if (havePrevious && SegmentMaySeeCard(g, previous, p))
                c.Polyline({ToPixel(previous), ToPixel(p)});
            previous = p;
            havePrevious = true;
        } else if (key == u"CIRCLE") {
            const double r = e.valueA * k;
            if (r > 0 && RingMaySeeCard(g, p, r))
                c.Ellipse(SquareAround(p, r));
        } else if (key == u"ARC") {
            // Bearings from the centre, valueD +1 clockwise; the outline goes on from the end.
            const double r = e.valueA * k;
            const double start = g.AngleOfTrue(e.valueB);
            const double end = g.AngleOfTrue(e.valueC);
            double sweep = e.valueD < 0 ? PositiveModulo(start - end, 360.0)
                                        : -PositiveModulo(end - start, 360.0);
            if (sweep == 0.0)
                sweep = e.valueD < 0 ? 360.0 : -360.0;
            if (r > 0 && RingMaySeeCard(g, p, r))
                c.Arc(SquareAround(p, r), 90.0 - start, sweep);
            PointF at = g.At(end, r);
            previous = {p.x + (at.x - g.cx), p.y + (at.y - g.cy)};
            havePrevious = true;
        } else {
            // A new outline, labelled where it starts.
            previous = p;
            havePrevious = true;
            if (InsideCard(g, p)) {
                Point at = ToPixel(p);
                c.DrawText(e.keyword.utf8(),
                           {at.x + Scaled(style, 2), at.y - Scaled(style, 11),
                            at.x + Scaled(style, 70), at.y},
                           platform::kTextLeft | platform::kTextSingleLine, kAirspaceColor,
                           style.face, true);
            }
        }
    }
}

void DrawRoute(Canvas& c, const CardGeometry& g, const CardStyle& style,
               const InstrumentFrameInput& in) {
    c.SetPen({platform::PenStyle::Solid, Scaled(style, 2), style.route});
    for (const InstrumentLeg& leg : in.route) {
        PointF a = g.Project(leg.startLatitude, leg.startLongitude);
        PointF b = g.Project(leg.endLatitude, leg.endLongitude);
        if (SegmentMaySeeCard(g, a, b))
            c.Polyline({ToPixel(a), ToPixel(b)});
    }
    if (!in.leg.valid)
        return;
    // The leg being flown stands out.
    PointF a = g.Project(in.leg.startLatitude, in.leg.startLongitude);
    PointF b = g.Project(in.leg.endLatitude, in.leg.endLongitude);
    if (SegmentMaySeeCard(g, a, b)) {
        c.SetPen({platform::PenStyle::Solid, Scaled(style, 4), style.active});
        c.Polyline({ToPixel(a), ToPixel(b)});
    }
}

Color SymbolColor(int type) {
    switch (type) {
        case 1:
        case 8:
        case 9:
            return kAirfieldColor;
        case 2:
        case 3:
        case 4:
            return kNavaidColor;
        default:
            return kFixColor;
    }
}

std::vector<Point> Ring(Point p, int r, int corners, double turn) {
    std::vector<Point> points;
    for (int i = 0; i < corners; ++i) {
        double a = (turn + 360.0 * i / corners) * kDegreesToRadians;
        points.push_back(ToPixel({p.x + r * std::sin(a), p.y - r * std::cos(a)}));
    }
    return points;
}

// One symbol per kind: airfield ring with a runway, VOR hexagon (in a box with DME), NDB dot in
// a ring, intersection and reporting point triangles, heliport H, seaport diamond, user cross.
void DrawSymbol(Canvas& c, const CardStyle& style, Point p, int type) {
    const Color color = SymbolColor(type);
    const int r = Scaled(style, 4);
    c.SetPen({platform::PenStyle::Solid, Scaled(style, 1), color});
    c.SetBrush({true, color});
    switch (type) {
        case 1:
            c.Ellipse({p.x - r, p.y - r, p.x + r + 1, p.y + r + 1});
            c.Polyline({{p.x - r, p.y + r}, {p.x + r, p.y - r}});
            break;
        case 2:
            c.Rectangle({p.x - r - 1, p.y - r - 1, p.x + r + 2, p.y + r + 2});
            c.Polygon(Ring(p, r, 6, 30));
            break;
        case 3:
            c.Polygon(Ring(p, r, 6, 30));
            break;
        case 4:
            c.Ellipse({p.x - r, p.y - r, p.x + r + 1, p.y + r + 1});
            c.SetBrush({false, color});
            c.Ellipse({p.x - r / 2, p.y - r / 2, p.x + r / 2 + 1, p.y + r / 2 + 1});
            break;
        case 5:
            c.Polygon(Ring(p, r, 3, 0));
            break;
        case 7:
            c.SetBrush({false, color});
            c.Polygon(Ring(p, r, 3, 0));
            break;
        case 8:
            c.Ellipse({p.x - r - 1, p.y - r - 1, p.x + r + 2, p.y + r + 2});
            c.Polyline({{p.x - r / 2, p.y - r / 2}, {p.x - r / 2, p.y + r / 2}});
            c.Polyline({{p.x + r / 2, p.y - r / 2}, {p.x + r / 2, p.y + r / 2}});
            c.Polyline({{p.x - r / 2, p.y}, {p.x + r / 2, p.y}});
            break;
        case 9:
            c.Polygon(Ring(p, r, 4, 0));
            break;
        default:
            c.Polyline({{p.x - r, p.y - r}, {p.x + r, p.y + r}});
            c.Polyline({{p.x - r, p.y + r}, {p.x + r, p.y - r}});
            break;
    }
}

struct Nearby {
    double distanceNm;
    std::size_t index;
};

void DrawWaypoints(Canvas& c, const CardGeometry& g, const CardStyle& style,
                   std::span<const NavEntry> nav, const std::stop_token& stop) {
    const double rangeUnits = g.rangeNm * 100.0;
    std::vector<Nearby> nearby;
    for (std::size_t i = 0; i < nav.size(); ++i) {
        if (i % kStopCheckEvery == 0 && stop.stop_requested())
            return;
        const NavEntry& e = nav[i];
        // Cheap tests on latitude first: most of a large database is far away.
        if (std::fabs(e.latitude - g.latitude) > rangeUnits)
            continue;
        PointF nm = g.OffsetNm(e.latitude, e.longitude);
        if (std::fabs(nm.x) > g.rangeNm)
            continue;
        double d = std::hypot(nm.x, nm.y);
        if (d <= g.rangeNm)
            nearby.push_back({d, i});
    }
    if (nearby.size() > kMaxWaypointsDrawn) {
        std::nth_element(
            nearby.begin(), nearby.begin() + kMaxWaypointsDrawn, nearby.end(),
            [](const Nearby& a, const Nearby& b) { return a.distanceNm < b.distanceNm; });
        nearby.resize(kMaxWaypointsDrawn);
    }
    c.SetFont({Scaled(style, 9), false});
    for (const Nearby& n : nearby) {
        const NavEntry& e = nav[n.index];
        Point p = ToPixel(g.Project(e.latitude, e.longitude));
        DrawSymbol(c, style, p, e.type);
        std::string ident = e.ident.empty() ? e.name.utf8().substr(0, 5) : e.ident.utf8();
        const int gap = Scaled(style, 6);
        c.DrawText(
            ident,
            {p.x + gap, p.y - Scaled(style, 6), p.x + Scaled(style, 60), p.y + Scaled(style, 6)},
            platform::kTextLeft | platform::kTextVCenter | platform::kTextSingleLine,
            SymbolColor(e.type), style.face, true);
    }
}

}  // namespace

void DrawMapLayer(Canvas& c, const CardGeometry& g, const CardStyle& style,
                  const InstrumentFrameInput& in) {
    if (in.showAirspace)
        DrawAirspace(c, g, style, in.airspace, in.stop);
    DrawRoute(c, g, style, in);
    DrawWaypoints(c, g, style, in.nav, in.stop);
    c.SetPen({});
    c.SetBrush({});
    MaskOutsideCard(c, g, style);
}

void MaskOutsideCard(Canvas& c, const CardGeometry& g, const CardStyle& style) {
    // One polygon round the picture's edge and back round the card: filled even-odd, it covers
    // only what lies between the two.
    const int w = c.Width(), h = c.Height();
    const int cy = static_cast<int>(std::lround(g.cy));
    std::vector<Point> points{{0, cy}, {0, 0}, {w, 0}, {w, h}, {0, h}, {0, cy}};
    constexpr int kSteps = 96;
    for (int i = 0; i <= kSteps; ++i)
        points.push_back(ToPixel(g.At(270.0 + 360.0 * i / kSteps, g.radius + 1)));
    c.SetPen({platform::PenStyle::Null, 0, style.background});
    c.SetBrush({false, style.background});
    c.Polygon(points);
    c.SetPen({});
    c.SetBrush({});
}

}  // namespace aerix
