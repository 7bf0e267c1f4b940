// Splitting an NMEA sentence into its comma-separated fields.
#pragma once

#include <cstddef>
#include <string_view>

namespace aerix {

// Longest field kept, plus one: NMEA fields are short, and a longer one is cut to
// kNmeaFieldSize - 1 characters.
inline constexpr std::size_t kNmeaFieldSize = 20;

// One field of a sentence, the bytes [first, last) inside it.
struct NmeaField {
    const char* first = nullptr;
    const char* last = nullptr;

    std::string_view View() const noexcept {
        return {first, static_cast<std::size_t>(last - first)};
    }
};

// Finds the field at cursor in a sentence that ends at `end` or at its first NUL byte, and sets
// `field` to it (cut to kNmeaFieldSize - 1 characters). Returns the position behind the
// character that ended it ("," or "*"; the end itself when the sentence ends there), or null
// with an empty field when the cursor is null or at the end. A field ending at "*" leaves the
// cursor on the checksum, so the next call reads it.
const char* NextNmeaField(const char* cursor, const char* end, NmeaField& field) noexcept;

}  // namespace aerix
