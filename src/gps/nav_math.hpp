// Navigation on a sphere where one arc minute of a great circle is one nautical mile. Positions
// are CentiMinutes (degrees x 6000), north and east positive.
#pragma once

namespace aerix {

// Degrees x 6000.
using CentiMinutes = double;

inline constexpr double kCentiMinutesToRadians = 2.9088820866572157e-6;  // pi / 1 080 000
inline constexpr double kRadiansToDegrees = 57.29577951308232;
inline constexpr double kRadiansToNauticalMiles = 3437.7467707849396;  // 10 800 / pi
inline constexpr double kDegreesToRadians = 0.017453292519943295;
inline constexpr double kTwoPi = 6.283185307179586;
inline constexpr double kQuarterPi = 0.7853981633974483;

// y modulo x brought into 0..x; x itself is reachable (PositiveModulo(-2pi, 2pi) is 2pi).
double PositiveModulo(double y, double x);

// True course (degrees, 0..360) and distance (nautical miles) from point 1 to point 2, along the
// rhumb line or, with greatCircle nonzero, the great circle.
void CourseDistance(CentiMinutes lat1, CentiMinutes lon1, CentiMinutes lat2, CentiMinutes lon2,
                    double& course, double& distance, unsigned char greatCircle);

// Heading (degrees true) and ground speed that fly a true course through a wind blowing from
// windDirection. No guard for a wind stronger than the airspeed: the results are then NaN.
double WindTriangle(double tas, double course, int windDirection, int windSpeed, double& heading,
                    double& groundSpeed);

}  // namespace aerix
