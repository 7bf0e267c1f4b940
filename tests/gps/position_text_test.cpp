#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "gps/position_text.hpp"
#include "platform/numeric.hpp"
#include "platform/text.hpp"

namespace aerix {
namespace {

// The text as printf makes it: "  N%02d°%06.3f E%03d°%06.3f".
std::string Reference(double lat, double lon) {
    auto angle = [](double v, const char* fmt) {
        char deg[32];
        char min[32];
        std::snprintf(deg, sizeof deg, fmt, std::abs(TruncInt32(v * 0.00016666666666666666)));
        std::snprintf(min, sizeof min, "%06.3f", std::fabs(std::fmod(v, 6000.0) * 0.01));
        return std::string(deg) + "\u00B0" + min;
    };
    return std::string(lat < 0 ? "  S" : "  N") + angle(lat, "%02d") + (lon < 0 ? " W" : " E") +
           angle(lon, "%03d");
}

TEST(PositionText, MatchesPrintfDigitForDigit) {
    const double values[] = {0.0,       288703.8,  -69100.0, 5999.99995, -5999.9995,
                             0.00049,   0.0005,    0.0015,   123.4565,   1079999.99,
                             -540000.0, 600.00051, 1e-300,   5.5e9,      -0.0};
    for (double lat : values) {
        for (double lon : values)
            EXPECT_EQ(Utf16ToUtf8(PositionText(lat, lon)), Reference(lat, lon))
                << lat << " " << lon;
    }
    EXPECT_EQ(Utf16ToUtf8(PositionText(std::numeric_limits<double>::quiet_NaN(), 0)),
              Reference(std::numeric_limits<double>::quiet_NaN(), 0));
}

}  // namespace
}  // namespace aerix
