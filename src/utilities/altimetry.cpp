#include "utilities/altimetry.hpp"

#include <cmath>

namespace aerix {

namespace {

constexpr double kIsaSeaLevelKelvin = 288.15;
constexpr double kZeroCelsius = 273.15;
constexpr double kLapsePerFoot = 0.0019812;  // 6.5 K/km
// T0 / L in feet: the height at which the ISA troposphere's temperature would reach 0 K.
constexpr double kScaleHeight = 145442.16;
// L R / g M and its complement for density: p ~ T^5.255877, rho ~ T^4.255877.
constexpr double kPressureExponent = 0.190263;
constexpr double kDensityExponent = 0.234969;

}  // namespace

double IsaTemperature(double pressureAltitude) {
    return 15.0 - kLapsePerFoot * pressureAltitude;
}

double PressureAltitude(double elevation, double qnhHpa) {
    return kScaleHeight * (1.0 - std::pow(qnhHpa / kIsaSeaLevelHpa, kPressureExponent) *
                                     (1.0 - elevation / kScaleHeight));
}

double DensityAltitude(double pressureAltitude, double temperatureC) {
    double pressureRatio = std::pow(1.0 - pressureAltitude / kScaleHeight, 1.0 / kPressureExponent);
    double densityRatio = pressureRatio * kIsaSeaLevelKelvin / (temperatureC + kZeroCelsius);
    return kScaleHeight * (1.0 - std::pow(densityRatio, kDensityExponent));
}

double TrueAltitude(double indicated, double qnhHpa, double temperatureC, double stationElevation) {
    double aircraftPa = PressureAltitude(indicated, qnhHpa);
    double stationPa = PressureAltitude(stationElevation, qnhHpa);
    double deviation = temperatureC - IsaTemperature(aircraftPa);
    double isaMean = IsaTemperature((aircraftPa + stationPa) / 2.0) + kZeroCelsius;
    return stationElevation + (indicated - stationElevation) * (isaMean + deviation) / isaMean;
}

std::optional<double> QnhFromEntry(double value) {
    constexpr double kHpaPerInch = 33.863886666667;
    if (value >= 800.0 && value <= 1100.0)
        return value;
    if (value >= 23.6 && value <= 32.5)
        return value * kHpaPerInch;
    return std::nullopt;
}

bool CheckAltitude(double feet, std::string_view what, std::string& error) {
    // The troposphere formulas hold to about 36,000 ft; allow the lowest dry land below sea level.
    if (std::isfinite(feet) && feet >= -1500.0 && feet <= 36000.0)
        return true;
    error = std::string(what) + " must be between -1500 and 36000 ft";
    return false;
}

bool CheckTemperature(double celsius, std::string& error) {
    if (std::isfinite(celsius) && celsius >= -90.0 && celsius <= 60.0)
        return true;
    error = "Temperature must be between -90 and 60 °C";
    return false;
}

}  // namespace aerix
