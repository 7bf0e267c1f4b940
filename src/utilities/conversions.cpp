#include "utilities/conversions.hpp"

namespace aerix {

namespace {

constexpr double kLbPerKgFuel = 2.2046;
constexpr double kLbPerUsGallonWater = 8.32674;
constexpr double kLbPerImpGallonWater = 10.0;
constexpr double kKgPerUsGallonWater = 3.7769844869817657;  // 8.32674 / 2.2046
constexpr double kKgPerImpGallonWater = 4.535970244035199;  // 10 / 2.2046

}  // namespace

std::array<std::optional<double>, 3> ConvertFrom(ConversionKind kind, ConversionField from,
                                                 double x) {
    std::array<std::optional<double>, 3> out;
    auto& a = out[kFieldA];
    auto& b = out[kFieldB];
    auto& c = out[kFieldC];
    switch (kind) {
        case kKindVolume:
            if (from == kFieldA) {
                b = x * 0.219975;
                c = x * 0.264179;
            } else if (from == kFieldB) {
                a = x * 4.54596;
                c = x * 1.20095;
            } else {
                a = x * 3.78531;
                b = x * 0.832674;
            }
            break;
        case kKindMass:
            if (from == kFieldA)
                b = x * 0.453592;
            else if (from == kFieldB)
                a = x * 2.204622;
            break;
        case kKindDistance:
        case kKindSpeed:
            if (from == kFieldA) {
                b = x * 1.15078;
                c = x * 1.852;
            } else if (from == kFieldB) {
                a = x * 0.868976;
                c = x * 1.6093435520000001;
            } else {
                a = x * 0.539957;
                b = x * 0.62137171646;
            }
            break;
        case kKindTemperature:
            if (from == kFieldA)
                b = x * 1.8 + 32.0;
            else if (from == kFieldB)
                a = (x - 32.0) * 0.5555555555555556;
            break;
        case kKindPressure:
            if (from == kFieldA)
                b = x * 0.0295301;
            else if (from == kFieldB)
                a = x * 33.863742;
            break;
        case kKindFuel:
            break;
    }
    return out;
}

double UsGallonsFromKg(double kg, double sg) {
    return kg * kLbPerKgFuel / (sg * kLbPerUsGallonWater);
}

double ImpGallonsFromKg(double kg, double sg) {
    return kg * kLbPerKgFuel / (sg * kLbPerImpGallonWater);
}

FuelQuantities FuelFrom(FuelSource from, double x, double sg) {
    FuelQuantities q;
    switch (from) {
        case kFuelFromLitres:
            q.litres = x;
            q.kg = sg * x;
            break;
        case kFuelFromUsGallons:
            q.usGallons = x;
            q.kg = sg * x * kKgPerUsGallonWater;
            break;
        case kFuelFromImpGallons:
            q.impGallons = x;
            q.kg = sg * x * kKgPerImpGallonWater;
            break;
        case kFuelFromKg:
            q.kg = x;
            break;
        case kFuelFromLb:
            q.kg = x / kLbPerKgFuel;
            break;
    }
    // Pounds typed in stay exactly what was typed.
    q.lb = from == kFuelFromLb ? x : q.kg * kLbPerKgFuel;
    if (from != kFuelFromUsGallons)
        q.usGallons = UsGallonsFromKg(q.kg, sg);
    if (from != kFuelFromImpGallons)
        q.impGallons = ImpGallonsFromKg(q.kg, sg);
    if (from != kFuelFromLitres)
        q.litres = q.kg / sg;
    return q;
}

}  // namespace aerix
