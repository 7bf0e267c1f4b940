#include "views/map_geometry.hpp"

#include "platform/numeric.hpp"

namespace aerix {

double MapColumnExact(const MapCalibrationValues& c, double longitude) {
    return (c[kRefX2] - c[kRefX1]) * (longitude - c[kRefLon1]) / (c[kRefLon2] - c[kRefLon1]) +
           c[kRefX1];
}

double MapRowExact(const MapCalibrationValues& c, double latitude) {
    return (c[kRefY2] - c[kRefY1]) * (latitude - c[kRefLat1]) / (c[kRefLat2] - c[kRefLat1]) +
           c[kRefY1];
}

int MapColumn(const MapCalibrationValues& c, double longitude) {
    return TruncInt32(MapColumnExact(c, longitude));
}

int MapRow(const MapCalibrationValues& c, double latitude) {
    return TruncInt32(MapRowExact(c, latitude));
}

bool MapContains(const MapCalibrationValues& c, double longitude, double latitude) {
    return !(longitude < c[kWestLimit] || longitude > c[kEastLimit] || latitude < c[kSouthLimit] ||
             latitude > c[kNorthLimit]);
}

}  // namespace aerix
