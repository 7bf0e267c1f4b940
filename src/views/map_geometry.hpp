// Latitude and longitude to chart pixels: linear on each axis between the two reference points,
// no projection.
#pragma once

#include "views/map_types.hpp"

namespace aerix {

// Unrounded column and row of a position in degrees.
double MapColumnExact(const MapCalibrationValues& c, double longitude);
double MapRowExact(const MapCalibrationValues& c, double latitude);
// Truncated toward zero, as the view places everything.
int MapColumn(const MapCalibrationValues& c, double longitude);
int MapRow(const MapCalibrationValues& c, double latitude);
// The limits count as inside.
bool MapContains(const MapCalibrationValues& c, double longitude, double latitude);

}  // namespace aerix
