#include "aircraft/weight_balance.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "aircraft/aircraft.hpp"
#include "utilities/conversions.hpp"

namespace aerix {

namespace {

bool Same(const EnvelopePoint& a, const EnvelopePoint& b) {
    return a.Arm == b.Arm && a.Weight == b.Weight;
}

// On the segment a-b, allowing for the rounding of a computed arm. Arms and weights differ in
// scale, so each axis gets its own tolerance.
bool OnSegment(const EnvelopePoint& a, const EnvelopePoint& b, double arm, double weight) {
    const double armTol = 1e-9 * std::max({1.0, std::fabs(a.Arm), std::fabs(b.Arm)});
    const double weightTol = 1e-9 * std::max({1.0, std::fabs(a.Weight), std::fabs(b.Weight)});
    if (arm < std::min(a.Arm, b.Arm) - armTol || arm > std::max(a.Arm, b.Arm) + armTol ||
        weight < std::min(a.Weight, b.Weight) - weightTol ||
        weight > std::max(a.Weight, b.Weight) + weightTol)
        return false;
    double dx = b.Arm - a.Arm, dy = b.Weight - a.Weight;
    // Distance from the line in each axis' own terms: the cross product normalised by length.
    double cross = (arm - a.Arm) * dy - (weight - a.Weight) * dx;
    double scale = std::fabs(dx) * weightTol + std::fabs(dy) * armTol;
    return std::fabs(cross) <= scale + 1e-12;
}

std::string LimitText(const char* name, std::int32_t limit, const std::string& units) {
    return std::string(name) + " " + std::to_string(limit) + (units.empty() ? "" : " " + units);
}

}  // namespace

std::vector<EnvelopePoint> DistinctCorners(const std::vector<EnvelopePoint>& points) {
    std::vector<EnvelopePoint> out;
    for (const EnvelopePoint& p : points)
        if (out.empty() || !Same(out.back(), p))
            out.push_back(p);
    while (out.size() > 1 && Same(out.front(), out.back()))
        out.pop_back();
    return out;
}

bool InsideEnvelope(const std::vector<EnvelopePoint>& polygon, double arm, double weight) {
    std::vector<EnvelopePoint> corners = DistinctCorners(polygon);
    if (corners.size() < 3 || !std::isfinite(arm) || !std::isfinite(weight))
        return false;
    bool inside = false;
    for (std::size_t i = 0, j = corners.size() - 1; i < corners.size(); j = i++) {
        const EnvelopePoint& a = corners[j];
        const EnvelopePoint& b = corners[i];
        if (OnSegment(a, b, arm, weight))
            return true;
        // Even-odd rule on a ray towards greater arms.
        if ((b.Weight > weight) != (a.Weight > weight)) {
            double crossArm = a.Arm + (weight - a.Weight) * (b.Arm - a.Arm) / (b.Weight - a.Weight);
            if (arm < crossArm)
                inside = !inside;
        }
    }
    return inside;
}

std::string EnvelopeSide(const std::vector<EnvelopePoint>& polygon, double arm, double weight) {
    std::vector<EnvelopePoint> corners = DistinctCorners(polygon);
    if (corners.size() < 3 || InsideEnvelope(corners, arm, weight))
        return {};
    double lo = INFINITY, hi = -INFINITY, top = -INFINITY;
    for (std::size_t i = 0, j = corners.size() - 1; i < corners.size(); j = i++) {
        const EnvelopePoint& a = corners[j];
        const EnvelopePoint& b = corners[i];
        top = std::max(top, b.Weight);
        if (std::min(a.Weight, b.Weight) <= weight && weight <= std::max(a.Weight, b.Weight)) {
            double at = a.Weight == b.Weight
                            ? a.Arm
                            : a.Arm + (weight - a.Weight) * (b.Arm - a.Arm) / (b.Weight - a.Weight);
            lo = std::min({lo, at, a.Weight == b.Weight ? b.Arm : at});
            hi = std::max({hi, at, a.Weight == b.Weight ? b.Arm : at});
        }
    }
    if (!std::isfinite(lo))
        return weight > top ? "above" : "below";
    if (arm < lo)
        return "forward of";
    if (arm > hi)
        return "aft of";
    return "outside";
}

std::string WeightBalanceResult::Verdict() const {
    if (!HasEnvelope)
        return "no envelope";
    return Within() ? "within envelope" : "OUT OF ENVELOPE";
}

double FuelWeight(double quantity, int fuelUnits, int weightUnits, double sg) {
    FuelSource from;
    switch (fuelUnits) {
        case kFuelPounds:
            from = kFuelFromLb;
            break;
        case kFuelKilograms:
            from = kFuelFromKg;
            break;
        case kFuelLitres:
            from = kFuelFromLitres;
            break;
        case kFuelImperialGallons:
            from = kFuelFromImpGallons;
            break;
        case kFuelUsGallons:
            from = kFuelFromUsGallons;
            break;
        default:
            return std::numeric_limits<double>::quiet_NaN();
    }
    // Mass to mass needs no specific gravity.
    if (fuelUnits == kFuelPounds && weightUnits == kWeightPounds)
        return quantity;
    if (fuelUnits == kFuelKilograms && weightUnits == kWeightKilograms)
        return quantity;
    FuelQuantities q = FuelFrom(from, quantity, sg);
    if (weightUnits == kWeightPounds)
        return q.lb;
    if (weightUnits == kWeightKilograms)
        return q.kg;
    return std::numeric_limits<double>::quiet_NaN();
}

WeightBalanceResult ComputeWeightBalance(const AircraftRecord& aircraft,
                                         const std::vector<StationLoad>& loads,
                                         const std::vector<EnvelopePoint>& envelope) {
    WeightBalanceResult r;
    double fuelMoment = 0.0;
    for (const StationLoad& s : loads) {
        r.Weight += s.Weight;
        r.Moment += s.Weight * s.Arm;
        if (s.Kind == 2) {
            r.FuelWeight += s.Weight;
            fuelMoment += s.Weight * s.Arm;
        }
    }
    r.Arm = r.Weight != 0.0 ? r.Moment / r.Weight : 0.0;
    r.ZeroFuelWeight = r.Weight - r.FuelWeight;
    double zeroFuelMoment = r.Moment - fuelMoment;
    r.ZeroFuelArm = r.ZeroFuelWeight != 0.0 ? zeroFuelMoment / r.ZeroFuelWeight : 0.0;
    double taxi = FuelWeight(aircraft.TaxiFuel, aircraft.FuelUnits, aircraft.WeightUnits);
    if (!std::isfinite(taxi) || taxi < 0.0)
        taxi = 0.0;
    r.TaxiFuelWeight = std::min(taxi, r.FuelWeight);
    r.TakeoffWeight = r.Weight - r.TaxiFuelWeight;

    r.HasEnvelope = DistinctCorners(envelope).size() >= 3;
    r.InsideEnvelope = InsideEnvelope(envelope, r.Arm, r.Weight);
    r.ZeroFuelInsideEnvelope = InsideEnvelope(envelope, r.ZeroFuelArm, r.ZeroFuelWeight);
    r.Side = EnvelopeSide(envelope, r.Arm, r.Weight);

    const std::string units = WeightUnitName(aircraft.WeightUnits);
    if (aircraft.MaxRampWeight > 0 && r.Weight > aircraft.MaxRampWeight)
        r.LimitsExceeded.push_back(LimitText("max ramp weight", aircraft.MaxRampWeight, units));
    if (aircraft.MaxTakeoffWeight > 0 && r.TakeoffWeight > aircraft.MaxTakeoffWeight)
        r.LimitsExceeded.push_back(
            LimitText("max take-off weight", aircraft.MaxTakeoffWeight, units));
    if (aircraft.MaxZeroFuelWeight > 0 && r.ZeroFuelWeight > aircraft.MaxZeroFuelWeight)
        r.LimitsExceeded.push_back(
            LimitText("max zero-fuel weight", aircraft.MaxZeroFuelWeight, units));
    return r;
}

std::string WeightUnitName(int code) {
    switch (code) {
        case kWeightPounds:
            return "lb";
        case kWeightKilograms:
            return "kg";
        default:
            return {};
    }
}

std::string FuelUnitName(int code) {
    switch (code) {
        case kFuelPounds:
            return "lb";
        case kFuelKilograms:
            return "kg";
        case kFuelLitres:
            return "ltr";
        case kFuelImperialGallons:
            return "Imp gal";
        case kFuelUsGallons:
            return "US gal";
        default:
            return {};
    }
}

std::string ArmUnitName(int code) {
    switch (code) {
        case kArmInches:
            return "in";
        case kArmMillimetres:
            return "mm";
        case kArmCentimetres:
            return "cm";
        case kArmMetres:
            return "m";
        default:
            return {};
    }
}

std::string FormatFigure(double value) {
    char buf[32];
    auto res = std::to_chars(buf, buf + sizeof buf, value);
    return std::string(buf, res.ptr);
}

}  // namespace aerix
