// The fix position as the pilot reads it: "  N52°12.345 W001°23.456".
#pragma once

#include <string>

#include "gps/gps_fix.hpp"
#include "gps/nav_math.hpp"

namespace aerix {

// Degrees and decimal minutes of a position in CentiMinutes.
std::u16string PositionText(CentiMinutes latitude, CentiMinutes longitude);

// Refreshes the position text of a fix from its latitude and longitude.
void FormatPosition(GpsFix& fix);

}  // namespace aerix
