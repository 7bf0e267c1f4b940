// The RMC sentence (recommended minimum data) into a fix. Only position, ground speed, track and
// variation are kept; time and date are read past.
#pragma once

#include <string_view>

#include "gps/gps_fix.hpp"

namespace aerix {

// Parses one whole RMC sentence ("$GPRMC,...", no line end; the bytes as received, ending at
// the first NUL if any) into fix, and nothing else. The checksum is not verified: receivers'
// sentences are used as they come. Status "V" only sets FixVoid; a status other than "A" or "V"
// changes nothing but clearing FixVoid.
void ParseRmc(std::string_view sentence, GpsFix& fix) noexcept;

// The decimal number at the start of text: optional sign, digits, point, digits, exponent.
// Stops at the first character that does not belong; an empty or malformed text gives 0.
double NmeaNumber(std::string_view text) noexcept;

}  // namespace aerix
