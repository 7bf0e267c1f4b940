#include "utilities/sun_times.hpp"

#include <cmath>

namespace aerix {

namespace {

constexpr double kToRadians = 0.017453292519943295;
constexpr double kToDegrees = 57.29577951308232;
constexpr double kTwoToRadians = 0.03490658503988659;
// cos(90.8333°): the sun's upper limb on the horizon, with refraction.
constexpr double kCosZenith = -0.014543897651582;

// One event: the rise (rising true) or the set. Returns UT hours or one of the never values.
double SunEvent(double latitude, double dayOfYear, double lngHour, bool rising) {
    double t = dayOfYear + ((rising ? 6.0 : 18.0) - lngHour) / 24.0;
    double m = 0.9856 * t - 3.289;
    double l = m + 1.916 * std::sin(m * kToRadians) + 0.02 * std::sin(m * kTwoToRadians) + 282.634;
    if (l > 360.0)
        l -= 360.0;
    else if (l < 0.0)
        l += 360.0;

    double ra = kToDegrees * std::atan(0.91764 * std::tan(l * kToRadians));
    ra += std::floor(l / 90.0) * 90.0 - std::floor(ra / 90.0) * 90.0;
    ra /= 15.0;

    double sinDec = 0.39782 * std::sin(l * kToRadians);
    double cosDec = std::cos(std::asin(sinDec));
    double cosH = (kCosZenith - sinDec * std::sin(latitude * kToRadians)) /
                  (cosDec * std::cos(latitude * kToRadians));
    if (cosH > 1.0)
        return kSunNeverRises;
    if (cosH < -1.0)
        return kSunNeverSets;

    double h = kToDegrees * std::acos(cosH);
    h = (rising ? 360.0 - h : h) / 15.0;
    double ut = h + ra - 0.06571 * t - 6.622 - lngHour;
    if (ut < 0.0)
        ut += 24.0;
    else if (ut > 24.0)
        ut -= 24.0;
    return ut;
}

}  // namespace

void SunTimes(double latitude, double longitude, const platform::UtcTime& date, double& sunrise,
              double& sunset) {
    // At the poles cos(latitude) is zero; move just off them.
    if (latitude == 90.0)
        latitude = 89.9999999999;
    else if (latitude == -90.0)
        latitude = -89.9999999999;

    double year = date.year;
    double month = date.month;
    double n1 = std::floor(275.0 * month / 9.0);
    double n2 = std::floor((month + 9.0) / 12.0);
    double n3 = 1.0 + std::floor((year - 4.0 * std::floor(year / 4.0) + 2.0) / 3.0);
    double dayOfYear = n1 - n2 * n3 + date.day - 30.0;

    double lngHour = longitude / 15.0;
    sunrise = SunEvent(latitude, dayOfYear, lngHour, true);
    sunset = SunEvent(latitude, dayOfYear, lngHour, false);
}

}  // namespace aerix
