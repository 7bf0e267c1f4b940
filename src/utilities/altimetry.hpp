// Altimetry of the flight computer in the ICAO standard atmosphere (ISA, troposphere): pressure,
// density and true altitude. Altitudes in feet, pressures in hPa, temperatures in °C.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace aerix {

inline constexpr double kIsaSeaLevelHpa = 1013.25;

// ISA temperature (°C) at a pressure altitude: 15 °C less 1.98 °C a thousand feet.
double IsaTemperature(double pressureAltitude);

// Pressure altitude of a place at `elevation` where the altimeter setting is qnhHpa: the
// station pressure is what an altimeter set to QNH turns into the elevation, and the pressure
// altitude is the ISA height of that pressure:
//   PA = H (1 - (QNH / 1013.25)^0.190263 (1 - elevation / H)),  H = 145442.16 ft (T0 / L).
double PressureAltitude(double elevation, double qnhHpa);

// Density altitude: the ISA height with the air density found at a pressure altitude and an
// outside air temperature (the NWS formula, dry air):
//   rho / rho0 = (p / p0) (288.15 / T),  DA = H (1 - (rho / rho0)^0.234969).
double DensityAltitude(double pressureAltitude, double temperatureC);

// True altitude for an altimeter set to QNH reading `indicated` with outside air temperature
// temperatureC at the aircraft, over a station at stationElevation. The thickness of the layer
// between station and aircraft grows with its mean absolute temperature (hypsometric
// correction, as the flight computer's true-altitude scale): the ISA deviation found at the
// aircraft is taken to hold down to the station,
//   TA = station + (indicated - station) (Tisa_mean + dev) / Tisa_mean.
double TrueAltitude(double indicated, double qnhHpa, double temperatureC, double stationElevation);

// An altimeter setting typed in hPa (800 to 1100) or inches of mercury (23.6 to 32.5), in hPa;
// nullopt when it is neither.
std::optional<double> QnhFromEntry(double value);

// Checks an entry of the altimetry dialogs; on failure sets `error` to a message for the pilot.
bool CheckAltitude(double feet, std::string_view what, std::string& error);
bool CheckTemperature(double celsius, std::string& error);

}  // namespace aerix
