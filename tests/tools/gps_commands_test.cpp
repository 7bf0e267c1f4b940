#include <gtest/gtest.h>

#include "tool_run.hpp"

#include <sys/wait.h>
#include <array>
#include <cstdio>
#include <string>

#include "support/test_platform.hpp"

namespace {

using aerix::testing::RunTool;
using aerix::testing::ToolRun;

TEST(NmeaCommand, PrintsOneFixPerParsedRmcLine) {
    aerix::testing::TempDir dir;
    auto log = dir.Path() / "GpsData.txt";
    aerix::testing::WriteFile(
        log,
        "$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W*6A\r\n"
        "$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47\r\n"
        "$GPRMC,123520,V,,,,,,,230394,,*6A\r\n");
    ToolRun run = RunTool("--json nmea " + log.string());
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.Both(),
              "{\"latitude\": 288703.79999999999, \"longitude\": 69100.0, \"groundSpeed\": "
              "22.399999999999999, \"trueTrack\": 84.400000000000006, \"magneticVariation\": "
              "3.1000000000000001, \"magneticTrack\": 87.5, \"void\": false, \"position\": \"  "
              "N48°07.038 E011°31.000\"}\n"
              "{\"latitude\": 288703.79999999999, \"longitude\": 69100.0, \"groundSpeed\": "
              "22.399999999999999, \"trueTrack\": 84.400000000000006, \"magneticVariation\": "
              "3.1000000000000001, \"magneticTrack\": 87.5, \"void\": true, \"position\": \"  "
              "N48°07.038 E011°31.000\"}\n");
    ToolRun missing = RunTool("nmea " + (dir.Path() / "none.txt").string());
    EXPECT_EQ(missing.status, 1);
    EXPECT_NE(missing.Both().find("cannot open"), std::string::npos);
}

TEST(SimulateCommand, FailsClearlyWithoutASectorToFly) {
    aerix::testing::TempDir dir;
    ToolRun run = RunTool("--home " + dir.Path().string() + " simulate --steps 3");
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.Both().find("plan has no sector to fly"), std::string::npos);
}

TEST(GpsCommand, ReportsAPortThatCannotBeOpened) {
    aerix::testing::TempDir dir;
    ToolRun run = RunTool("--home " + dir.Path().string() +
                          " gps --port /dev/aerix-no-such-port --seconds 1");
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.Both().find("Communications Error 2 \r\nOpening Comms Port."), std::string::npos);
}

}  // namespace
