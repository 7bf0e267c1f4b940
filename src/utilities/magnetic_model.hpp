// Magnetic variation from the World Magnetic Model: spherical-harmonic synthesis of the
// geomagnetic field over the model's Gauss coefficients (resources/wmm/WMM.COF).
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/clock.hpp"

namespace aerix {

// The field at a point, in nT, in the local geodetic frame (north, east, down).
struct MagneticField {
    double north = 0;
    double east = 0;
    double down = 0;
    double declination = 0;  // degrees, east positive
    double inclination = 0;  // degrees, down positive
};

class MagneticModel {
  public:
    // Reads a coefficient file in NOAA's COF layout. A file that is missing, incomplete or not
    // in that layout gives nullopt and a message saying what is wrong, naming the file.
    static std::optional<MagneticModel> Load(const std::filesystem::path& path, std::string& error);
    static std::optional<MagneticModel> Parse(std::string_view text, std::string_view source,
                                              std::string& error);

    // The field at a geodetic latitude and longitude (degrees, north and east positive), a
    // height above the WGS84 ellipsoid in km and a decimal year.
    MagneticField Field(double latitude, double longitude, double heightKm, double year) const;

    double Epoch() const { return epoch_; }
    // Models are issued for five years from their epoch.
    double ValidUntil() const { return epoch_ + 5.0; }
    const std::string& Name() const { return name_; }
    int MaxDegree() const { return maxDegree_; }

  private:
    double epoch_ = 0;
    std::string name_;
    int maxDegree_ = 0;
    // Indexed n(n+1)/2 + m.
    std::vector<double> g_, h_, gDot_, hDot_;
};

// A date as a decimal year: the year plus the fraction of it elapsed at that instant (UTC).
double DecimalYear(const platform::UtcTime& date);

struct MagneticVariationResult {
    bool ok = false;         // false when the model could not be loaded; message says why
    double declination = 0;  // degrees, east positive
    double variation = 0;    // degrees, west positive, as the rest of the program counts it
    double decimalYear = 0;
    bool outsideValidity = false;  // the date lies outside the model's years; still answered
    std::string message;           // the load error, or the validity warning
};

// The variation at a position (degrees, north and east positive), an altitude in feet above
// mean sea level and a UTC date, from the installed model (loaded once, on first use).
MagneticVariationResult MagneticVariation(double latitude, double longitude, double altitudeFeet,
                                          const platform::UtcTime& date);
// As above with a given model.
MagneticVariationResult MagneticVariation(const MagneticModel& model, double latitude,
                                          double longitude, double altitudeFeet,
                                          const platform::UtcTime& date);

}  // namespace aerix
