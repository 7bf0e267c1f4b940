// aerix-tool's utility commands, run as the built program.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include "tool_run.hpp"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using aerix::testing::ToolRun;

// Every command here answers in JSON.
aerix::testing::ToolRun Tool(const std::string& args) {
    return aerix::testing::RunTool("--json " + args);
}

double Number(const std::string& json, const std::string& key) {
    auto at = json.find("\"" + key + "\": ");
    if (at == std::string::npos)
        return std::nan("");
    return std::strtod(json.c_str() + at + key.size() + 4, nullptr);
}

TEST(UtilityCommands, Answer) {
    EXPECT_EQ(Tool("convert volume ltr 10").Both(),
              "{\"ltr\": \"10.00\", \"img\": \"2.20\", \"usg\": \"2.64\"}\n");
    EXPECT_EQ(Tool("convert fuel ltr 100").Both(),
              "{\"ltr\": \"100.00\", \"usg\": \"26.48\", \"img\": \"22.05\", \"kg\": \"72.00\", "
              "\"lb\": \"158.73\"}\n");
    EXPECT_EQ(Tool("convert fuel kg 100 --sg 0.8").Both(),
              "{\"ltr\": \"125.00\", \"usg\": \"33.10\", \"img\": \"27.56\", \"kg\": \"100.00\", "
              "\"lb\": \"220.46\"}\n");
    EXPECT_EQ(Tool("convert temperature F 212").Both(), "{\"C\": \"100.00\", \"F\": \"212.00\"}\n");

    ToolRun sun = Tool("sun 40.9 -74.3 1990-06-25");
    EXPECT_NEAR(Number(sun.Both(), "sunrise"), 9.4414, 1e-4) << sun.Both();
    EXPECT_EQ(Tool("sun 90 0 2025-06-21").Both(), "{\"sunrise\": -99.0, \"sunset\": -99.0}\n");

    ToolRun magvar = Tool("magvar 37.6189 -122.375 2026-01-01");
    EXPECT_NEAR(Number(magvar.Both(), "declination"), 12.86, 0.1) << magvar.Both();
    EXPECT_NEAR(Number(magvar.Both(), "variation"), -12.86, 0.1) << magvar.Both();
    EXPECT_NE(Tool("magvar 37.6 -122.4 2031-01-01 --alt 5000").Both().find("\"warning\""),
              std::string::npos);

    ToolRun xw = Tool("crosswind 27L 300 20");
    EXPECT_NEAR(Number(xw.Both(), "crosswind"), 10.0, 1e-9) << xw.Both();
    EXPECT_NEAR(Number(Tool("pressure-altitude 0 1000").Both(), "pressureAltitude"), 364, 1);
    EXPECT_NEAR(Number(Tool("density-altitude 5000 5.094").Both(), "densityAltitude"), 5000, 1);
    EXPECT_NEAR(
        Number(Tool("true-altitude 3000 1013 15 --station-elev 3000").Both(), "trueAltitude"), 3000,
        1e-6);
    EXPECT_EQ(Tool("holding 360 150").Both(),
              "{\"entry\": \"Teardrop\", \"turns\": \"right\", \"outboundCourse\": 180.0, "
              "\"teardropHeading\": 150.0, \"outboundSeconds\": 60.0, \"outboundTime\": "
              "\"1:00\"}\n");
    EXPECT_EQ(Tool("logbook 1:30 2:45").Both(),
              "{\"total\": \"04:15\", \"minutes\": 255, \"hours\": 4.25, \"entries\": 2}\n");
}

TEST(UtilityCommands, RefuseBadInput) {
    struct Case {
        const char* args;
        int status;
        const char* message;
    };
    const Case cases[] = {
        {"convert volume ltr ten", 2, "not a finite number"},
        {"convert weight lb 1", 2, "KIND"},
        {"convert mass ltr 1", 1, "the mass kind has the units lb, kg"},
        {"convert volume ltr 1 --sg 0.8", 1, "--sg belongs to the fuel kind"},
        {"sun 40 10 2025-13-01", 1, "invalid date \"2025-13-01\""},
        {"sun 91 10 2025-01-01", 2, "LAT"},
        {"magvar 40 10 25-01-01", 1, "expected YYYY-MM-DD"},
        {"crosswind 40 300 20", 1, "runway \"40\""},
        {"crosswind 27 300 -5", 1, "Wind speed must be 0 to 300 kt"},
        {"pressure-altitude 1000 1200", 1, "QNH must be"},
        {"density-altitude 3000 nan", 2, "not a finite number"},
        {"holding 360 150 --tas 100", 2, "--tas requires"},
        {"logbook 1:30 1:61", 1, "\"1:61\": minutes must be 00 to 59"},
    };
    for (const auto& c : cases) {
        ToolRun run = Tool(c.args);
        EXPECT_EQ(run.status, c.status) << c.args << ": " << run.Both();
        EXPECT_NE(run.Both().find(c.message), std::string::npos) << c.args << ": " << run.Both();
    }

    setenv("AERIX_RESOURCES", "/nonexistent", 1);
    ToolRun noModel = Tool("magvar 51 0 2026-01-01");
    unsetenv("AERIX_RESOURCES");
    EXPECT_EQ(noModel.status, 1);
    EXPECT_EQ(noModel.Both(),
              "aerix-tool: Magnetic model /nonexistent/wmm/WMM.COF cannot be read\n");
}

}  // namespace
