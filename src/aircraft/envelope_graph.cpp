#include "aircraft/envelope_graph.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

namespace aerix {

namespace {

using platform::Point;
using platform::Rect;

constexpr int kLeftMargin = 32;    // weight labels
constexpr int kBottomMargin = 14;  // arm labels
constexpr int kTopMargin = 12;     // weight unit
constexpr int kRightMargin = 8;
constexpr int kMarker = 4;  // half size of the loaded point's marker

struct Range {
    double lo, hi;
    void Hold(double v) {
        if (std::isfinite(v)) {
            lo = std::min(lo, v);
            hi = std::max(hi, v);
        }
    }
};

std::string TickText(double v) {
    char buf[32];
    double rounded = std::round(v);
    if (std::fabs(v - rounded) < 1e-9 * std::max(1.0, std::fabs(v)))
        std::snprintf(buf, sizeof buf, "%.0f", rounded);
    else
        std::snprintf(buf, sizeof buf, "%g", v);
    return buf;
}

}  // namespace

Point EnvelopeGraphFrame::Map(double arm, double weight) const {
    double fx = (arm - ArmMin) / (ArmMax - ArmMin);
    double fy = (weight - WeightMin) / (WeightMax - WeightMin);
    return {Plot.left + static_cast<int>(std::lround(fx * Plot.Width())),
            Plot.bottom - static_cast<int>(std::lround(fy * Plot.Height()))};
}

EnvelopeGraphFrame MakeEnvelopeGraphFrame(const Rect& area, const AircraftRecord& aircraft,
                                          const std::vector<EnvelopePoint>& envelope,
                                          const WeightBalanceResult& result) {
    EnvelopeGraphFrame f;
    f.Plot = {area.left + kLeftMargin, area.top + kTopMargin, area.right - kRightMargin,
              area.bottom - kBottomMargin};
    // Each axis keeps the aircraft's range when it is a real one.
    auto range = [](double lo, double hi) {
        bool given = std::isfinite(lo) && std::isfinite(hi) && hi > lo;
        return given ? Range{lo, hi} : Range{INFINITY, -INFINITY};
    };
    Range arm = range(aircraft.GraphArmMin, aircraft.GraphArmMax);
    Range weight = range(aircraft.GraphWeightMin, aircraft.GraphWeightMax);
    Range held = arm, heldW = weight;
    for (const EnvelopePoint& p : envelope) {
        held.Hold(p.Arm);
        heldW.Hold(p.Weight);
    }
    if (result.Weight > 0.0) {
        held.Hold(result.Arm);
        heldW.Hold(result.Weight);
        if (result.ZeroFuelWeight > 0.0) {
            held.Hold(result.ZeroFuelArm);
            heldW.Hold(result.ZeroFuelWeight);
        }
    }
    // Widened ranges get a margin so the outermost point is not drawn on the frame.
    auto settle = [](Range r, Range given, double fallbackLo, double fallbackHi) {
        if (!std::isfinite(r.lo) || !std::isfinite(r.hi))
            return Range{fallbackLo, fallbackHi};
        if (r.lo == given.lo && r.hi == given.hi)
            return r;
        double span = r.hi - r.lo;
        double pad = span > 0 ? span * 0.05 : std::max(1.0, std::fabs(r.lo) * 0.05);
        return Range{r.lo < given.lo ? r.lo - pad : r.lo, r.hi > given.hi ? r.hi + pad : r.hi};
    };
    Range a = settle(held, arm, 0.0, 1.0);
    Range w = settle(heldW, weight, 0.0, 1.0);
    f.ArmMin = a.lo;
    f.ArmMax = a.hi;
    f.WeightMin = w.lo;
    f.WeightMax = w.hi;
    return f;
}

std::vector<double> GraphTicks(double lo, double hi, int count) {
    std::vector<double> ticks;
    if (!(hi > lo) || count < 1 || !std::isfinite(lo) || !std::isfinite(hi))
        return ticks;
    double raw = (hi - lo) / count;
    double power = std::pow(10.0, std::floor(std::log10(raw)));
    double mult = 1.0;
    for (double m : {1.0, 2.0, 5.0, 10.0}) {
        mult = m;
        if (m * power >= raw)
            break;
    }
    // Ticks as whole multiples, divided by a whole power of ten below 1, so 0.6 is 0.6 exactly.
    double inverse = power < 1.0 ? std::round(1.0 / power) : 0.0;
    auto value = [&](double n) { return inverse > 0.0 ? n * mult / inverse : n * mult * power; };
    double step = mult * power;
    for (double n = std::ceil(lo / step - 1e-9); value(n) <= hi + step * 1e-9; n += 1.0)
        ticks.push_back(n == 0.0 ? 0.0 : value(n));
    return ticks;
}

void DrawEnvelopeGraph(platform::Canvas& c, const Rect& area, const AircraftRecord& aircraft,
                       const std::vector<EnvelopePoint>& envelope,
                       const WeightBalanceResult& result) {
    using namespace platform;
    EnvelopeGraphFrame f = MakeEnvelopeGraphFrame(area, aircraft, envelope, result);
    c.FillRect(area, kWhite);
    c.SetFont(Font{9, false});

    // Grid and tick labels.
    const Color grid = Rgb(210, 210, 210);
    const Color label = Rgb(60, 60, 60);
    c.SetPen(Pen{PenStyle::Solid, 1, grid});
    for (double v : GraphTicks(f.ArmMin, f.ArmMax, 4)) {
        Point p = f.Map(v, f.WeightMin);
        c.MoveTo(p.x, f.Plot.top);
        c.LineTo(p.x, f.Plot.bottom);
        c.DrawText(TickText(v), Rect{p.x - 20, f.Plot.bottom + 1, p.x + 20, area.bottom},
                   kTextCenter | kTextSingleLine, label, kWhite, true);
    }
    for (double v : GraphTicks(f.WeightMin, f.WeightMax, 4)) {
        Point p = f.Map(f.ArmMin, v);
        c.MoveTo(f.Plot.left, p.y);
        c.LineTo(f.Plot.right, p.y);
        c.DrawText(TickText(v), Rect{area.left, p.y - 6, f.Plot.left - 2, p.y + 6},
                   kTextRight | kTextVCenter | kTextSingleLine, label, kWhite, true);
    }
    std::string weightUnits = WeightUnitName(aircraft.WeightUnits);
    std::string armUnits = ArmUnitName(aircraft.ArmUnits);
    c.DrawText(weightUnits, Rect{area.left, area.top, f.Plot.left - 2, f.Plot.top},
               kTextRight | kTextSingleLine, label, kWhite, true);
    c.DrawText(armUnits, Rect{f.Plot.right - 30, area.top, f.Plot.right, f.Plot.top},
               kTextRight | kTextSingleLine, label, kWhite, true);

    // The envelope.
    std::vector<EnvelopePoint> corners = DistinctCorners(envelope);
    if (corners.size() >= 3) {
        std::vector<Point> outline;
        for (const EnvelopePoint& p : corners)
            outline.push_back(f.Map(p.Arm, p.Weight));
        c.SetPen(Pen{PenStyle::Solid, 2, Rgb(0, 90, 0)});
        c.SetBrush(Brush{false, kEnvelopeFill});
        c.Polygon(outline);
    }

    // The axes' box over the grid.
    c.SetPen(Pen{PenStyle::Solid, 1, kBlack});
    c.SetBrush(Brush{true, kWhite});
    c.Rectangle(f.Plot);

    if (result.Weight <= 0.0)
        return;
    Color mark = result.Within() ? kLoadedInside : kLoadedOutside;
    Point loaded = f.Map(result.Arm, result.Weight);
    if (result.FuelWeight > 0.0 && result.ZeroFuelWeight > 0.0) {
        Point zero = f.Map(result.ZeroFuelArm, result.ZeroFuelWeight);
        c.SetPen(Pen{PenStyle::Dash, 1, mark});
        c.MoveTo(loaded.x, loaded.y);
        c.LineTo(zero.x, zero.y);
        c.SetPen(Pen{PenStyle::Solid, 1, mark});
        c.SetBrush(Brush{true, kWhite});
        c.Rectangle(Rect{zero.x - 3, zero.y - 3, zero.x + 4, zero.y + 4});
    }
    c.SetPen(Pen{PenStyle::Solid, 1, mark});
    c.SetBrush(Brush{false, mark});
    c.Ellipse(Rect{loaded.x - kMarker, loaded.y - kMarker, loaded.x + kMarker + 1,
                   loaded.y + kMarker + 1});
}

}  // namespace aerix
