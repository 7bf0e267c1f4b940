#include <gtest/gtest.h>

#include <string>

#include "gps/line_assembler.hpp"
#include "gps/nmea_line.hpp"
#include "support/test_platform.hpp"

namespace aerix {
namespace {

std::vector<std::string> Lines(LineAssembler& a, std::string_view bytes) {
    std::vector<std::string> lines;
    for (char b : bytes) {
        if (a.Push(b))
            lines.push_back(a.Dropped() ? "<dropped>" : std::string(a.Line()));
    }
    return lines;
}

TEST(LineAssembler, KeepsExactBytesAndDropsOverlongLinesWhole) {
    LineAssembler a;
    std::string longLine(kNmeaLineBufferSize + 1, 'x');
    std::string exact(kNmeaLineBufferSize, 'y');
    auto lines = Lines(a, "$A,1\r\n\n" + longLine + "\n" + exact + "\n$B\r\n");
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[0], "$A,1\r");
    EXPECT_EQ(lines[1], "");
    EXPECT_EQ(lines[2], "<dropped>");
    EXPECT_EQ(lines[3], exact);
    EXPECT_EQ(lines[4], "$B\r");  // no leftovers from the longer lines before it
}

TEST(NmeaLine, FiltersLikeTheReader) {
    testing::TestPlatform platform;
    struct Case {
        std::string line;
        bool drawing;
        bool parsed;
        int idleResets;
    } cases[] = {
        {"$GPRMC,1,A,4807.038,N,01131.000,E,1,2,3,4,W*6A\r", false, true, 1},
        {"$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9*47\r", false, false, 1},
        {"$GPRMC,1,A,4807.038,N,01131.000,E,1,2,3,4,W*6A\r", true, false, 1},
        {"GPRMC,1,A\r", false, false, 0},
        {"$GPRM\r", false, false, 0},
        {"$LCRMC\r", false, true, 1},
    };
    for (const auto& c : cases) {
        auto before = platform.Idle().ResetCount();
        GpsFix fix;
        EXPECT_EQ(HandleNmeaLine(c.line, fix, c.drawing), c.parsed) << c.line;
        EXPECT_EQ(platform.Idle().ResetCount() - before, c.idleResets) << c.line;
    }
    EXPECT_TRUE(IsRmcLine("$GNRMC"));
    EXPECT_FALSE(IsRmcLine("$GPGGA,RMC"));
}

TEST(NmeaLine, LineFeedOnlyLosesItsLastRealCharacter) {
    testing::TestPlatform platform;
    GpsFix withCr;
    GpsFix withoutCr;
    HandleNmeaLine("$GPRMC,1,A,4807.038,N,01131.000,E,1,2.0,3,3.1,E\r", withCr, false);
    HandleNmeaLine("$GPRMC,1,A,4807.038,N,01131.000,E,1,2.0,3,3.1,E", withoutCr, false);
    EXPECT_DOUBLE_EQ(withCr.magneticVariation, -3.1);
    EXPECT_DOUBLE_EQ(withoutCr.magneticVariation, 3.1);  // the "E" was cut
}

}  // namespace
}  // namespace aerix
