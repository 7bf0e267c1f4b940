#include "views/instrument_geometry.hpp"

#include <algorithm>
#include <cmath>

#include "gps/nav_math.hpp"
#include "views/instrument_frame.hpp"

namespace aerix {

namespace {
constexpr double kUnitsPerNm = 100.0;  // CentiMinutes of latitude in a nautical mile
constexpr double kHalfTurnUnits = 180.0 * 6000.0;
constexpr double kMaxPixel = 30000.0;
}  // namespace

PointF CardGeometry::OffsetNm(double lat, double lon) const {
    double dLon = lon - longitude;
    if (dLon > kHalfTurnUnits)
        dLon -= 2 * kHalfTurnUnits;
    else if (dLon < -kHalfTurnUnits)
        dLon += 2 * kHalfTurnUnits;
    return {dLon * cosLatitude / kUnitsPerNm, (lat - latitude) / kUnitsPerNm};
}

PointF CardGeometry::Project(double lat, double lon) const {
    PointF nm = OffsetNm(lat, lon);
    // Turn the map so that the track points up.
    const double t = trueTrack * kDegreesToRadians;
    const double right = nm.x * std::cos(t) - nm.y * std::sin(t);
    const double ahead = nm.x * std::sin(t) + nm.y * std::cos(t);
    const double k = PixelsPerNm();
    return {cx + right * k, cy - ahead * k};
}

PointF CardGeometry::At(double screenAngle, double r) const {
    const double a = screenAngle * kDegreesToRadians;
    return {cx + r * std::sin(a), cy - r * std::cos(a)};
}

CardGeometry MakeCardGeometry(double cx, double cy, double radius, double rangeNm, double latitude,
                              double longitude, double trueTrack, double magneticTrack) {
    CardGeometry g;
    g.cx = cx;
    g.cy = cy;
    g.radius = radius;
    g.rangeNm = rangeNm;
    g.trueTrack = trueTrack;
    g.magneticTrack = magneticTrack;
    g.latitude = latitude;
    g.longitude = longitude;
    g.cosLatitude = std::cos(latitude * kCentiMinutesToRadians);
    return g;
}

platform::Point ToPixel(PointF p) {
    auto clamp = [](double v) {
        if (!std::isfinite(v))
            return 0;
        return static_cast<int>(std::lround(std::clamp(v, -kMaxPixel, kMaxPixel)));
    };
    return {clamp(p.x), clamp(p.y)};
}

double CrossTrackNm(const ActiveLeg& leg) {
    if (!leg.valid)
        return 0.0;
    return leg.bar.distance * std::sin((leg.bar.bearing - leg.course) * kDegreesToRadians);
}

double DeviationDots(double crossTrackNm) {
    double dots = crossTrackNm / kFullScaleDeviationNm * 5.0;
    return std::clamp(dots, -5.5, 5.5);
}

}  // namespace aerix
