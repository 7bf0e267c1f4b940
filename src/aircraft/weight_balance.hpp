// Weight and balance: the loads of an aircraft summed into weight, moment and centre-of-gravity
// arm, checked against its envelope (a polygon of arm/weight corners) and its weight limits.
#pragma once

#include <string>
#include <vector>

#include "aircraft/loading.hpp"
#include "store/records.hpp"

namespace aerix {

struct EnvelopePoint {
    double Arm = 0.0;
    double Weight = 0.0;
};

// The corners of an envelope without the closing repeat of the first and without consecutive
// duplicates.
std::vector<EnvelopePoint> DistinctCorners(const std::vector<EnvelopePoint>& points);

// True when (arm, weight) lies inside the polygon or on its outline. The polygon may or may not
// repeat its first corner at the end; fewer than three distinct corners contain nothing.
bool InsideEnvelope(const std::vector<EnvelopePoint>& polygon, double arm, double weight);

// Where a point outside the envelope lies: "forward of", "aft of", "above" or "below" it (or
// "outside" in a notch of an odd outline); empty when inside or without an envelope.
std::string EnvelopeSide(const std::vector<EnvelopePoint>& polygon, double arm, double weight);

struct WeightBalanceResult {
    double Weight = 0.0;  // everything loaded (ramp weight)
    double Moment = 0.0;
    double Arm = 0.0;
    double FuelWeight = 0.0;
    double TaxiFuelWeight = 0.0;  // burnt before take-off, at most the fuel loaded
    double TakeoffWeight = 0.0;
    double ZeroFuelWeight = 0.0;
    double ZeroFuelArm = 0.0;
    bool HasEnvelope = false;  // at least three distinct corners
    bool InsideEnvelope = false;
    bool ZeroFuelInsideEnvelope = false;
    std::string Side;                         // EnvelopeSide of the loaded point
    std::vector<std::string> LimitsExceeded;  // e.g. "max take-off weight 2400 lb"

    // The verdict: inside a real envelope with no weight limit exceeded.
    bool Within() const { return HasEnvelope && InsideEnvelope && LimitsExceeded.empty(); }
    // "within envelope", "OUT OF ENVELOPE" or "no envelope".
    std::string Verdict() const;
};

// Sums the loads. Taxi fuel (property 621, fuel units) is converted like the fuel loaded.
WeightBalanceResult ComputeWeightBalance(const AircraftRecord& aircraft,
                                         const std::vector<StationLoad>& loads,
                                         const std::vector<EnvelopePoint>& envelope);

// Default specific gravity of fuel, as the conversions start with.
inline constexpr double kDefaultFuelSg = 0.72;

// A fuel quantity in fuel units (623) as a weight in weight units (622). NaN for an unknown code.
double FuelWeight(double quantity, int fuelUnits, int weightUnits, double sg = kDefaultFuelSg);

// Unit names: "lb"/"kg"; "lb", "kg", "ltr", "Imp gal", "US gal"; "in", "mm", "cm", "m". Empty for
// an unknown code.
std::string WeightUnitName(int code);
std::string FuelUnitName(int code);
std::string ArmUnitName(int code);

// A figure for display: shortest text that reads back as the same double ("39", "29.93").
std::string FormatFigure(double value);

}  // namespace aerix
