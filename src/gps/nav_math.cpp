#include "gps/nav_math.hpp"

#include <cmath>

#include "platform/numeric.hpp"

namespace aerix {

double PositiveModulo(double y, double x) {
    if (y >= 0)
        return y - x * TruncInt32(y / x);
    return y + x * (1 - TruncInt32(y / x));
}

namespace {

void GreatCircle(double phi1, double L1, double phi2, double L2, double& course, double& distance) {
    double c =
        std::sin(phi1) * std::sin(phi2) + std::cos(phi1) * std::cos(phi2) * std::cos(L1 - L2);
    if (c > 1.0)
        c = 1.0;  // rounding above 1 only; no clamp at -1
    double d = std::acos(c);
    distance = d * kRadiansToNauticalMiles;
    if (distance == 0.0) {
        course = 0;
        distance = 0;
        return;
    }
    double t =
        std::acos((std::sin(phi2) - std::sin(phi1) * std::cos(d)) / (std::cos(phi1) * std::sin(d)));
    if (std::sin(L2 - L1) < 0) {
        course = t * kRadiansToDegrees;
    } else {
        course = (kTwoPi - t) * kRadiansToDegrees;
    }
}

void RhumbLine(double phi1, double L1, double phi2, double L2, double& course, double& distance) {
    double dW = PositiveModulo(L2 - L1, kTwoPi);
    double dE = PositiveModulo(L1 - L2, kTwoPi);
    double dPhi = std::log(std::tan(phi2 / 2 + kQuarterPi) / std::tan(phi1 / 2 + kQuarterPi));
    double dLat = phi2 - phi1;
    double q = std::fabs(dLat) < std::sqrt(1e-15) ? std::cos(phi1) : dLat / dPhi;
    double tc = 0;
    double d = 0;
    if (dW < dE) {
        tc = PositiveModulo(std::atan2(-dW, dPhi), kTwoPi);
        d = std::sqrt(std::pow(q, 2.0) * std::pow(dW, 2.0) + std::pow(dLat, 2.0));
    } else {
        tc = PositiveModulo(std::atan2(dE, dPhi), kTwoPi);
        d = std::sqrt(std::pow(q, 2.0) * std::pow(dE, 2.0) + std::pow(dLat, 2.0));
    }
    course = tc * kRadiansToDegrees;
    distance = d * kRadiansToNauticalMiles;
}

}  // namespace

void CourseDistance(CentiMinutes lat1, CentiMinutes lon1, CentiMinutes lat2, CentiMinutes lon2,
                    double& course, double& distance, unsigned char greatCircle) {
    // The formulas below count longitude west positive.
    const double k = kCentiMinutesToRadians;
    double phi1 = lat1 * k;
    double L1 = lon1 * -k;
    double phi2 = lat2 * k;
    double L2 = lon2 * -k;
    // Keeps both solutions away from an exactly zero longitude difference: a due north or south
    // leg comes out a hair off 0 or 180 degrees.
    if (L1 == L2)
        L2 = L1 + 1e-5;
    if (greatCircle) {
        GreatCircle(phi1, L1, phi2, L2, course, distance);
    } else {
        RhumbLine(phi1, L1, phi2, L2, course, distance);
    }
}

double WindTriangle(double tas, double course, int windDirection, int windSpeed, double& heading,
                    double& groundSpeed) {
    double a = (static_cast<double>(windDirection) - course) * kDegreesToRadians;
    double swc = (windSpeed / tas) * std::sin(a);
    // The arcsine of swc, written through atan.
    double h = course * kDegreesToRadians + std::atan(swc / std::sqrt(1 - swc * swc));
    if (h < 0) {
        h += kTwoPi;
    } else if (h > kTwoPi) {
        h -= kTwoPi;
    }
    heading = h * kRadiansToDegrees;
    groundSpeed = std::sqrt(1 - swc * swc) * tas - windSpeed * std::cos(a);
    return groundSpeed;
}

}  // namespace aerix
