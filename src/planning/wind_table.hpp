// The forecast wind and temperature at an altitude, interpolated between the rows of the wind
// table ("WindTable", or "ZeroWindTable" on request) around it.
#pragma once

#include <cstdint>

namespace aerix {

struct WindAtResult {
    int direction = 0;         // degrees true the wind blows from, 0..360 (360 is kept)
    int speed = 0;             // kt
    double temperature = 0.0;  // degrees, a whole number
};

// Below the lowest row or above the highest the nearest row is returned as it stands. With fewer
// than three rows warns "Wind table has less than 3 records!" and gives calm wind at 0 degrees.
WindAtResult WindAt(std::int32_t altitude, bool useZeroWindTable);

}  // namespace aerix
