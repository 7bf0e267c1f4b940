// The in-memory navigation database and airspace overlay, as the displays read them while flying.
// Coordinates are whole CentiMinutes (degrees x 6000), north and east positive.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/text.hpp"

namespace aerix {

// One waypoint of the loaded navigation database (144 bytes, as the loader's arithmetic expects).
struct NavEntry {
    WideBuf<36> name;            // property 100
    WideBuf<6> ident;            // property 101
    std::int32_t latitude = 0;   // property 102
    std::int32_t longitude = 0;  // property 103
    std::int16_t type = 0;       // property 105
    WideBuf<24> extra;           // property 108
};

// One line of the airspace file (64 bytes).
//   keyword "GLINETO": a straight segment from the previous point to this one;
//   keyword "CIRCLE":  a circle centred here, valueA its radius in nautical miles;
//   keyword "ARC":     an arc centred here, valueA its radius in nautical miles, valueB and valueC
//                      its start and end bearings in degrees true, valueD +1 clockwise and -1
//                      anticlockwise;
//   anything else:     starts a new outline at this point, the keyword being its label.
struct AirspaceEntry {
    WideBuf<10> keyword;
    std::int32_t latitude = 0;
    std::int32_t longitude = 0;
    double valueA = 0.0;
    double valueB = 0.0;
    double valueC = 0.0;
    std::int32_t valueD = 0;
};

inline constexpr std::int32_t kWholeWorldNorth = 90 * 6000;
inline constexpr std::int32_t kWholeWorldEast = 180 * 6000;

}  // namespace aerix
