#include "gps/nmea_field.hpp"

namespace aerix {

namespace {

// The bytes that end a field: ",", "*" and the NUL that ends the sentence early. One look-up a
// byte keeps the split cheap even in an unoptimised build.
constexpr struct FieldEnds {
    bool at[256] = {};
    constexpr FieldEnds() {
        at[static_cast<unsigned char>(',')] = true;
        at[static_cast<unsigned char>('*')] = true;
        at[0] = true;
    }
} kFieldEnds;

}  // namespace

const char* NextNmeaField(const char* cursor, const char* end, NmeaField& field) noexcept {
    field.first = field.last = cursor;
    if (!cursor || cursor == end || *cursor == '\0')
        return nullptr;
    const char* p = cursor;
    while (p != end && !kFieldEnds.at[static_cast<unsigned char>(*p)])
        ++p;
    field.last =
        p - cursor < static_cast<std::ptrdiff_t>(kNmeaFieldSize) ? p : cursor + kNmeaFieldSize - 1;
    // Stay on the end rather than step past it.
    return p == end || *p == '\0' ? p : p + 1;
}

}  // namespace aerix
