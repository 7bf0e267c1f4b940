// Sunrise and sunset by the Almanac for Computers method (official zenith 90°50'), with the
// almanac's printed constants kept as they stand.
#pragma once

#include "platform/clock.hpp"

namespace aerix {

// Result for a day on which the sun stays below the horizon.
inline constexpr double kSunNeverRises = 99.0;
// Result for a day on which the sun stays above the horizon.
inline constexpr double kSunNeverSets = -99.0;

// Sunrise and sunset in UTC hours (0..24) on the UTC date of `date` (year, month and day are
// used) at a position in degrees, north and east positive. Either result may be kSunNeverRises
// or kSunNeverSets.
void SunTimes(double latitude, double longitude, const platform::UtcTime& date, double& sunrise,
              double& sunset);

}  // namespace aerix
