#include "gps/nmea_field.hpp"

namespace aerix {

const char16_t* NextNmeaField(const char16_t* cursor, char16_t* field) noexcept {
    field[0] = u'\0';
    if (!cursor || *cursor == u'\0')
        return nullptr;
    if (*cursor == u',')
        return cursor + 1;
    std::size_t n = 0;
    while (*cursor != u'\0' && *cursor != u'*' && *cursor != u',') {
        if (n < kNmeaFieldSize - 1)
            field[n++] = *cursor;
        ++cursor;
    }
    field[n] = u'\0';
    // Stay on a terminator rather than step past the end of the sentence.
    return *cursor == u'\0' ? cursor : cursor + 1;
}

}  // namespace aerix
