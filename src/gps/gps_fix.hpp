// The current position fix. Latitude and longitude are CentiMinutes (degrees x 6000), north and
// east positive; variation is west positive.
#pragma once

#include <cstdint>

#include "platform/text.hpp"

namespace aerix {

struct GpsFix {
    double latitude = 0.0;
    double longitude = 0.0;
    double groundSpeed = 0.0;
    double trueTrack = 0.0;
    double magneticVariation = 0.0;
    double magneticTrack = 0.0;
    // The receiver sent a variation; without it (the simulator, many receivers) the views take
    // the variation from the magnetic model instead.
    bool variationKnown = false;
    // A position has been received: until then latitude and longitude are no place at all.
    bool positionKnown = false;
    WideBuf<28> positionText;
    std::uint8_t FixVoid = 0;
};

}  // namespace aerix
