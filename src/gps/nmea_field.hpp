// Splitting an NMEA sentence into its comma-separated fields.
#pragma once

#include <cstddef>

namespace aerix {

// Characters of a field buffer, terminator included. NMEA fields are short; a longer one is cut.
inline constexpr std::size_t kNmeaFieldSize = 20;

// Copies the field at cursor into `field` (kNmeaFieldSize characters) and returns the position
// behind the character that ended it ("," or "*"; the terminator itself when the sentence ends
// there), or null when the cursor is null or at the end. A field ending at "*" leaves the cursor
// on the checksum, so the next call reads it.
const char16_t* NextNmeaField(const char16_t* cursor, char16_t* field) noexcept;

}  // namespace aerix
