#include "gps/position_text.hpp"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "app/state/app_state.hpp"
#include "platform/numeric.hpp"

namespace aerix {

namespace {

constexpr double kCentiMinutesToDegrees = 0.00016666666666666666;

void AppendAscii(std::u16string& out, const char* text) {
    for (const char* p = text; *p; ++p)
        out += static_cast<char16_t>(*p);
}

void AppendAngle(std::u16string& out, CentiMinutes value, const char* degreeFormat) {
    char buf[32];
    std::snprintf(buf, sizeof buf, degreeFormat,
                  std::abs(TruncInt32(value * kCentiMinutesToDegrees)));
    AppendAscii(out, buf);
    out += u'\u00B0';
    std::snprintf(buf, sizeof buf, "%06.3f", std::fabs(std::fmod(value, 6000.0) * 0.01));
    AppendAscii(out, buf);
}

}  // namespace

std::u16string PositionText(CentiMinutes latitude, CentiMinutes longitude) {
    std::u16string text = latitude < 0 ? u"  S" : u"  N";
    AppendAngle(text, latitude, "%02d");
    text += longitude < 0 ? u" W" : u" E";
    AppendAngle(text, longitude, "%03d");
    return text;
}

void FormatPosition() {
    g_app.Fix.positionText.assign(PositionText(g_app.Fix.latitude, g_app.Fix.longitude));
}

}  // namespace aerix
