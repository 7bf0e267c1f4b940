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

// The field is exactly the one character c.
bool Equals(const NmeaField& field, char c) {
    return field.last - field.first == 1 && *field.first == c;
}

// The long way, for what the fast path cannot do exactly: many digits or an exponent.
double SlowNumber(const char* first, const char* last) noexcept {
    double value = 0.0;
    std::from_chars(first, last, value);
    return value;
}

// NmeaNumber over [p, end), on pointers: this runs for every field of every sentence.
double Number(const char* p, const char* end) noexcept {
    while (p != end && (*p == ' ' || *p == '\t'))
        ++p;
    bool negative = false;
    if (p != end && (*p == '+' || *p == '-')) {
        negative = *p == '-';
        ++p;
    }
    const char* first = p;
    // An exact integer divided by an exact power of ten is correctly rounded, which covers
    // everything a receiver sends.
    std::uint64_t mantissa = 0;
    int digits = 0;
    int fractionDigits = 0;
    bool any = false;
    bool point = false;
    for (; p != end; ++p) {
        // Written out rather than called: this loop is the parser's hottest.
        const unsigned digit = static_cast<unsigned char>(*p) - static_cast<unsigned>('0');
        if (digit < 10) {
            any = true;
            if (mantissa != 0 || digit != 0)
                ++digits;
            mantissa = mantissa * 10 + digit;
            fractionDigits += point;
        } else if (*p == '.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    if (!any)
        return 0.0;
    bool exponent = false;
    if (p != end && (*p == 'e' || *p == 'E')) {
        const char* e = p + 1;
        if (e != end && (*e == '+' || *e == '-'))
            ++e;
        if (e != end && *e >= '0' && *e <= '9') {
            exponent = true;
            while (e != end && *e >= '0' && *e <= '9')
                ++e;
            p = e;
        }
    }
    double value = !exponent && digits <= 15 && fractionDigits <= 22
                       ? static_cast<double>(mantissa) / kPowersOfTen[fractionDigits]
                       : SlowNumber(first, p);
    return negative ? -value : value;
}

// ddmm.mmmm (degreeDigits 2) or dddmm.mmmm (3) in CentiMinutes: minutes from the character after
// the degrees, which are read only when the field is longer than them.
double Angle(const NmeaField& field, int degreeDigits) noexcept {
    if (field.last - field.first < degreeDigits)
        return Number(field.first, field.last) * 6000.0;
    const char* minutes = field.first + degreeDigits;
    return Number(field.first, minutes) * 6000.0 + Number(minutes, field.last) * 100.0;
}

}  // namespace

double NmeaNumber(std::string_view text) noexcept {
    return Number(text.data(), text.data() + text.size());
}

void ParseRmc(std::string_view sentence, GpsFix& fix) noexcept {
    const char* end = sentence.data() + sentence.size();
    NmeaField field;
    const char* cursor = sentence.data();
    cursor = NextNmeaField(cursor, end, field);  // address
    cursor = NextNmeaField(cursor, end, field);  // UTC time

    fix.FixVoid = 0;
    cursor = NextNmeaField(cursor, end, field);
    const bool status = field.first != field.last;
    if (status && *field.first == 'V') {
        fix.FixVoid = 1;
        return;
    }
    bool active = status && *field.first == 'A';

    NmeaField latitude, latitudeSide, longitude, longitudeSide, speed, track, date, variation,
        variationSide;
    cursor = NextNmeaField(cursor, end, latitude);
    cursor = NextNmeaField(cursor, end, latitudeSide);
    cursor = NextNmeaField(cursor, end, longitude);
    cursor = NextNmeaField(cursor, end, longitudeSide);
    cursor = NextNmeaField(cursor, end, speed);
    cursor = NextNmeaField(cursor, end, track);
    cursor = NextNmeaField(cursor, end, date);
    cursor = NextNmeaField(cursor, end, variation);
    NextNmeaField(cursor, end, variationSide);
    if (!active)
        return;

    fix.latitude = Angle(latitude, 2);
    if (Equals(latitudeSide, 'S'))
        fix.latitude *= -1.0;
    fix.longitude = Angle(longitude, 3);
    if (Equals(longitudeSide, 'W'))
        fix.longitude *= -1.0;

    fix.positionText.assign(PositionText(fix.latitude, fix.longitude));
    fix.positionKnown = true;

    fix.groundSpeed = Number(speed.first, speed.last);
    fix.trueTrack = Number(track.first, track.last);
    fix.magneticVariation = Number(variation.first, variation.last);
    fix.variationKnown = variation.first != variation.last;
    if (Equals(variationSide, 'E'))
        fix.magneticVariation *= -1.0;

    fix.magneticTrack = std::fmod(fix.trueTrack + fix.magneticVariation, 360.0);
    if (fix.magneticTrack < 0)
        fix.magneticTrack += 360.0;
}

}  // namespace aerix
