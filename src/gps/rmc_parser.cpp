#include "gps/rmc_parser.hpp"

#include <charconv>
#include <cmath>
#include <cstdint>

#include "gps/nmea_field.hpp"
#include "gps/position_text.hpp"

namespace aerix {

namespace {

constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

bool IsDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

bool Equals(const char16_t* field, char16_t c) {
    return field[0] == c && field[1] == u'\0';
}

// The long way, for what the fast path cannot do exactly: many digits or an exponent.
double SlowNumber(const char16_t* first, const char16_t* last) noexcept {
    char ascii[kNmeaFieldSize + 8];
    std::size_t n = 0;
    for (const char16_t* p = first; p != last && n < sizeof ascii; ++p)
        ascii[n++] = static_cast<char>(*p);
    double value = 0.0;
    std::from_chars(ascii, ascii + n, value);
    return value;
}

}  // namespace

double NmeaNumber(const char16_t* text) noexcept {
    const char16_t* p = text;
    while (*p == u' ' || *p == u'\t')
        ++p;
    bool negative = false;
    if (*p == u'+' || *p == u'-') {
        negative = *p == u'-';
        ++p;
    }
    const char16_t* first = p;
    // An exact integer divided by an exact power of ten is correctly rounded, which covers
    // everything a receiver sends.
    std::uint64_t mantissa = 0;
    int digits = 0;
    int fractionDigits = 0;
    bool any = false;
    bool point = false;
    for (;; ++p) {
        if (IsDigit(*p)) {
            any = true;
            if (mantissa != 0 || *p != u'0')
                ++digits;
            mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p - u'0');
            fractionDigits += point;
        } else if (*p == u'.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    if (!any)
        return 0.0;
    bool exponent = false;
    if (*p == u'e' || *p == u'E') {
        const char16_t* e = p + 1;
        if (*e == u'+' || *e == u'-')
            ++e;
        if (IsDigit(*e)) {
            exponent = true;
            while (IsDigit(*e))
                ++e;
            p = e;
        }
    }
    double value = !exponent && digits <= 15 && fractionDigits <= 22
                       ? static_cast<double>(mantissa) / kPowersOfTen[fractionDigits]
                       : SlowNumber(first, p);
    return negative ? -value : value;
}

void RmcParser(const char16_t* sentence, GpsFix& fix) noexcept {
    char16_t field[kNmeaFieldSize];
    const char16_t* cursor = sentence;
    cursor = NextNmeaField(cursor, field);  // address
    cursor = NextNmeaField(cursor, field);  // UTC time

    fix.FixVoid = 0;
    cursor = NextNmeaField(cursor, field);
    if (field[0] == u'V') {
        fix.FixVoid = 1;
        return;
    }
    bool active = field[0] == u'A';

    char16_t latitude[kNmeaFieldSize], latitudeSide[kNmeaFieldSize];
    char16_t longitude[kNmeaFieldSize], longitudeSide[kNmeaFieldSize];
    char16_t speed[kNmeaFieldSize], track[kNmeaFieldSize], date[kNmeaFieldSize];
    char16_t variation[kNmeaFieldSize], variationSide[kNmeaFieldSize];
    cursor = NextNmeaField(cursor, latitude);
    cursor = NextNmeaField(cursor, latitudeSide);
    cursor = NextNmeaField(cursor, longitude);
    cursor = NextNmeaField(cursor, longitudeSide);
    cursor = NextNmeaField(cursor, speed);
    cursor = NextNmeaField(cursor, track);
    cursor = NextNmeaField(cursor, date);
    cursor = NextNmeaField(cursor, variation);
    NextNmeaField(cursor, variationSide);
    if (!active)
        return;

    // ddmm.mmmm: minutes from the third character, degrees the first two.
    double minutes = latitude[0] && latitude[1] ? NmeaNumber(latitude + 2) : 0.0;
    if (latitude[0] && latitude[1])
        latitude[2] = u'\0';
    fix.latitude = NmeaNumber(latitude) * 6000.0 + minutes * 100.0;
    if (Equals(latitudeSide, u'S'))
        fix.latitude *= -1.0;

    // dddmm.mmmm: minutes from the fourth character, degrees the first three.
    bool threeDegrees = longitude[0] && longitude[1] && longitude[2];
    minutes = threeDegrees ? NmeaNumber(longitude + 3) : 0.0;
    if (threeDegrees)
        longitude[3] = u'\0';
    fix.longitude = NmeaNumber(longitude) * 6000.0 + minutes * 100.0;
    if (Equals(longitudeSide, u'W'))
        fix.longitude *= -1.0;

    fix.positionText.assign(PositionText(fix.latitude, fix.longitude));
    fix.positionKnown = true;

    fix.groundSpeed = NmeaNumber(speed);
    fix.trueTrack = NmeaNumber(track);
    fix.magneticVariation = NmeaNumber(variation);
    fix.variationKnown = variation[0] != u'\0';
    if (Equals(variationSide, u'E'))
        fix.magneticVariation *= -1.0;

    fix.magneticTrack = std::fmod(fix.trueTrack + fix.magneticVariation, 360.0);
    if (fix.magneticTrack < 0)
        fix.magneticTrack += 360.0;
}

}  // namespace aerix
