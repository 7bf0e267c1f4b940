// The RMC sentence (recommended minimum data) into a fix. Only position, ground speed, track and
// variation are kept; time and date are read past.
#pragma once

#include "gps/gps_fix.hpp"

namespace aerix {

// Parses one whole RMC line ("$GPRMC,...", no line end) into fix. The checksum is not verified:
// receivers' sentences are used as they come. Status "V" only sets FixVoid; a status other than
// "A" or "V" changes nothing but clearing FixVoid.
void RmcParser(const char16_t* sentence, GpsFix& fix) noexcept;

// The decimal number at the start of text: optional sign, digits, point, digits, exponent.
// Stops at the first character that does not belong; an empty or malformed text gives 0.
double NmeaNumber(const char16_t* text) noexcept;

}  // namespace aerix
