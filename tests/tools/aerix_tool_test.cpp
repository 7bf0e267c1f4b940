// aerix-tool end to end: the built program run as a user runs it.
#include <gtest/gtest.h>

#include "tool_run.hpp"

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "test_platform.hpp"

namespace aerix {
namespace {

using aerix::testing::ReadFile;
using aerix::testing::TempDir;
using Json = nlohmann::ordered_json;
using testing::RunTool;
using testing::ToolRun;

Json ToolJson(const std::string& args) {
    ToolRun run = RunTool("--json " + args);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    return Json::parse(run.out);
}

TEST(AerixTool, MathCommandsGiveTheirResultsAsJson) {
    const struct {
        const char* args;
        const char *key1, *key2;
        double value1, value2, tolerance;
    } cases[] = {{"course 51.5 -0.5 48.8 2.3", "course", "distance", 146.40492905512286,
                  194.4850650611466, 1e-9},
                 {"course --great-circle 51.5 -0.5 48.8 2.3", "course", "distance",
                  145.3125634089736, 194.4736552552971, 1e-4},
                 {"wind-triangle 100 90 0 20", "heading", "groundSpeed", 78.46304096718451,
                  97.97958971132712, 1e-9}};
    for (const auto& c : cases) {
        Json result = ToolJson(c.args);
        EXPECT_EQ(result.size(), 2u);
        EXPECT_NEAR(result.at(c.key1).get<double>(), c.value1, c.tolerance) << c.args;
        EXPECT_NEAR(result.at(c.key2).get<double>(), c.value2, c.tolerance) << c.args;
    }
    Json stalled = ToolJson("wind-triangle 0 90 90 10");  // no airspeed: NaN, which JSON lacks
    EXPECT_TRUE(stalled.at("heading").is_null());
    EXPECT_TRUE(stalled.at("groundSpeed").is_null());
    EXPECT_EQ(ToolJson("position 52.20575 -1.3909333333").at("text"), "  N52°12.345 W001°23.456");
    EXPECT_EQ(ToolJson("position -0.5 0").at("text"), "  S00°30.000 E000°00.000");
}

TEST(AerixTool, SettingsOnAFreshHomeWriteAndLoadTheDefaults) {
    TempDir home;
    Json s = ToolJson("--home '" + home.Path().string() + "' settings");
    std::vector<std::string> keys;
    for (auto& [key, value] : s.items())
        keys.push_back(key);
    EXPECT_EQ(keys, (std::vector<std::string>{"AcReg", "CuDbase", "CuPlanName", "CurrentPlan",
                                              "CommPort", "BaudRate", "shlinmap", "shlinhsi",
                                              "shsinmap", "shsinhsi", "EnableHotKeys",
                                              "showAirspace", "recordGPSdata", "overwriteGPSdata",
                                              "showTrkPointer", "FuelCalc", "IcaoSearch"}));
    EXPECT_EQ(s["AcReg"], "G-CESS");
    EXPECT_EQ(s["CuDbase"], "");
    EXPECT_EQ(s["CommPort"], "COM1:");
    EXPECT_EQ(s["BaudRate"], 4800);
    EXPECT_EQ(s["shlinhsi"], 1);  // a 1-byte 0 read over BaudRate's upper byte
    EXPECT_EQ(s["FuelCalc"], 1);
    EXPECT_EQ(s["IcaoSearch"], 0);
    EXPECT_NE(ReadFile(home.Path() / "registry.reg").find("\"shlinhsi\"=hex(4):00"),
              std::string::npos);
}

TEST(AerixTool, UnreadableSettingsFileIsReportedAndSetAside) {
    TempDir home;
    aerix::testing::WriteFile(home.Path() / "registry.reg", "not a hive");
    ToolRun run = RunTool("--home '" + home.Path().string() + "' settings");
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.err.find("kept as registry.reg.bad"), std::string::npos) << run.err;
    EXPECT_EQ(ReadFile(home.Path() / "registry.reg.bad"), "not a hive");
    EXPECT_NE(run.out.find("AcReg: G-CESS\n"), std::string::npos);
}

TEST(AerixTool, UsageErrorsExitTwoWithOneLine) {
    for (const char* args : {"", "bogus", "course 1 2 3", "course 95 0 0 0", "course a 0 0 0",
                             "wind-triangle 100 90 x 10", "position 0 200", "--nope course"}) {
        ToolRun run = RunTool(args);
        EXPECT_EQ(run.status, 2) << args;
        EXPECT_EQ(run.out, "") << args;
        EXPECT_EQ(run.err.rfind("aerix-tool: ", 0), 0u) << args << ": " << run.err;
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << args << ": " << run.err;
    }
}

TEST(AerixTool, PlainOutputIsKeyValueLines) {
    ToolRun run = RunTool("course 0 0 0 10");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "course: 90\ndistance: 600\n\n");
    EXPECT_EQ(RunTool("position 0 0").out, "text:   N00°00.000 E000°00.000\n");
}

}  // namespace
}  // namespace aerix
