// The "Density/Press alt" and "True Altitude" flight-computer dialog models.
#pragma once

#include <string>
#include <string_view>

namespace aerix {

class PressureDensityDialog {
  public:
    static constexpr std::string_view kTitle = "Density/Press alt";

    void Open();
    int Close();

    std::string elevation;    // feet
    std::string qnh;          // hPa, or inches of mercury
    std::string temperature;  // outside air temperature, °C

    // Shows pressure altitude, and density altitude too when a temperature is given.
    bool Compute();
    const std::string& PressureAltitudeText() const { return pressureText_; }  // "1425 ft"
    const std::string& DensityAltitudeText() const { return densityText_; }
    double PressureAltitudeFeet() const { return pressureAltitude_; }
    double DensityAltitudeFeet() const { return densityAltitude_; }

  private:
    double pressureAltitude_ = 0;
    double densityAltitude_ = 0;
    std::string pressureText_;
    std::string densityText_;
};

class TrueAltitudeDialog {
  public:
    static constexpr std::string_view kTitle = "True Altitude";

    void Open();
    int Close();

    std::string indicated;         // feet, altimeter set to QNH
    std::string qnh;               // hPa, or inches of mercury
    std::string temperature;       // outside air temperature at the aircraft, °C
    std::string stationElevation;  // feet; empty for sea level

    bool Compute();
    const std::string& TrueAltitudeText() const { return trueText_; }  // "4823 ft"
    double TrueAltitudeFeet() const { return trueAltitude_; }

  private:
    double trueAltitude_ = 0;
    std::string trueText_;
};

// "%.0f ft".
std::string FormatFeet(double feet);

}  // namespace aerix
