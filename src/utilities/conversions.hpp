// The unit conversion factors of the "Conversions" dialog. Some pairs are not exact inverses of
// each other (pounds to kilograms 0.453592, back 2.204622, and 2.2046 for fuel): pilots compare
// results with the program's earlier answers, so the factors stay as they are.
#pragma once

#include <array>
#include <optional>

namespace aerix {

enum ConversionKind {
    kKindVolume = 1,
    kKindMass = 2,
    kKindDistance = 3,
    kKindTemperature = 4,
    kKindPressure = 5,
    kKindSpeed = 6,
    kKindFuel = 7,
};

// The three value fields of kinds 1 to 6.
enum ConversionField { kFieldA = 0, kFieldB = 1, kFieldC = 2 };

// Fields A, B and C after typing x into `from` (kinds 1 to 6): the fields the kind computes from
// it are set, the others are nullopt (the typed field itself, and C where the kind has none).
std::array<std::optional<double>, 3> ConvertFrom(ConversionKind kind, ConversionField from,
                                                 double x);

// Fuel: the volume of a mass of fuel of specific gravity sg, in each gallon.
double UsGallonsFromKg(double kg, double sg);
double ImpGallonsFromKg(double kg, double sg);

struct FuelQuantities {
    double litres = 0;
    double usGallons = 0;
    double impGallons = 0;
    double kg = 0;
    double lb = 0;
};

enum FuelSource {
    kFuelFromLitres,
    kFuelFromUsGallons,
    kFuelFromImpGallons,
    kFuelFromKg,
    kFuelFromLb,
};

// Every fuel quantity from one of them. A specific gravity of 0 gives infinities or NaN.
FuelQuantities FuelFrom(FuelSource from, double x, double sg);

}  // namespace aerix
