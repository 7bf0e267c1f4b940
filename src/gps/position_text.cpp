#include "gps/position_text.hpp"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "platform/numeric.hpp"

namespace aerix {

namespace {

constexpr double kCentiMinutesToDegrees = 0.00016666666666666666;

// The fix is refreshed for every sentence, so the text is built without printf: to_chars gives
// the same digits as "%02d" / "%06.3f".
void AppendDigits(std::u16string& out, const char* first, const char* last, std::size_t width) {
    for (std::size_t n = static_cast<std::size_t>(last - first); n < width; ++n)
        out += u'0';
    for (const char* p = first; p != last; ++p)
        out += static_cast<char16_t>(*p);
}

void AppendAngle(std::u16string& out, CentiMinutes value, std::size_t degreeWidth) {
    char buf[64];
    long long degrees = std::llabs(TruncInt32(value * kCentiMinutesToDegrees));
    auto end = std::to_chars(buf, buf + sizeof buf, degrees).ptr;
    AppendDigits(out, buf, end, degreeWidth);
    out += u'\u00B0';
    double minutes = std::fabs(std::fmod(value, 6000.0) * 0.01);
    if (std::isfinite(minutes)) {
        end = std::to_chars(buf, buf + sizeof buf, minutes, std::chars_format::fixed, 3).ptr;
        AppendDigits(out, buf, end, 6);
    } else {
        int n = std::snprintf(buf, sizeof buf, "%06.3f", minutes);
        AppendDigits(out, buf, buf + n, 0);
    }
}

}  // namespace

std::u16string PositionText(CentiMinutes latitude, CentiMinutes longitude) {
    std::u16string text;
    text.reserve(32);
    text += latitude < 0 ? u"  S" : u"  N";
    AppendAngle(text, latitude, 2);
    text += longitude < 0 ? u" W" : u" E";
    AppendAngle(text, longitude, 3);
    return text;
}

void FormatPosition(GpsFix& fix) {
    fix.positionText.assign(PositionText(fix.latitude, fix.longitude));
}

}  // namespace aerix
