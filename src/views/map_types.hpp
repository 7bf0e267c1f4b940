// Plain values of the map view that the program-wide state holds: the calibration's fields and
// what the data bar shows.
#pragma once

#include <array>
#include <string>

#include "gps/direction_reference.hpp"
#include "platform/canvas.hpp"

namespace aerix {

// Indices into the thirteen calibration numbers (MapRecord properties 301-313, in order).
enum MapCalibrationField : int {
    kScaleNumber = 0,  // pixels per degree of longitude
    kRefX1,
    kRefX2,
    kRefY1,
    kRefY2,
    kRefLon1,
    kRefLon2,
    kRefLat1,
    kRefLat2,
    kSouthLimit,
    kNorthLimit,
    kWestLimit,
    kEastLimit,
};

using MapCalibrationValues = std::array<double, 13>;

// The waypoint being flown, as the data bar shows it. Bearing is degrees true (shown in the
// reference), distance nautical miles, the relative angle signed (right positive) and never more
// than 90 degrees; ahead is false once the waypoint lies behind. Without a fix there is no
// bearing or distance to show.
struct DataBarInfo {
    bool valid = false;
    bool haveFix = true;
    DirectionReference reference;
    std::u16string name;
    double latitude = 0.0;  // CentiMinutes
    double longitude = 0.0;
    double bearing = 0.0;
    double distance = 0.0;
    double relativeAngle = 0.0;
    bool ahead = true;
};

}  // namespace aerix
