// aerix-tool wind, plan, fuel and aircraft, run as a pilot would from a fresh data root.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include "tool_run.hpp"

#include <sys/wait.h>
#include <array>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "support/test_platform.hpp"

namespace {

using aerix::testing::RunToolAt;
using aerix::testing::ToolRun;

using aerix::testing::ReadFile;
using aerix::testing::TempDir;
using Json = nlohmann::json;

std::vector<Json> Lines(const std::string& out) {
    std::vector<Json> lines;
    std::istringstream in(out);
    for (std::string line; std::getline(in, line);)
        lines.push_back(Json::parse(line));
    return lines;
}

class PlanningCommands : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(RunToolAt(home_.Path(), "init").status, 0); }
    ToolRun Ok(const std::string& args) {
        ToolRun r = RunToolAt(home_.Path(), args);
        EXPECT_EQ(r.status, 0) << args << ": " << r.err;
        return r;
    }
    ToolRun Fails(const std::string& args) {
        ToolRun r = RunToolAt(home_.Path(), args);
        EXPECT_EQ(r.status, 1) << args;
        return r;
    }
    TempDir home_;
};

TEST_F(PlanningCommands, ThreeSectorTripShowsAFlightLog) {
    Ok("plan new Trip");
    Ok("plan add-sector 51.5,-0.5 51.75,-1.25 --alt 2000 --phase climb");
    Ok("plan add-sector 51.75,-1.25 52.2,-1.6 --alt 4500 --phase cruise --variation 1");
    Ok("plan add-sector 52.2,-1.6 52.45,-1.75 --alt 3500 --phase descent --still-air");
    // A later sector starts where the one before ends.
    ToolRun wrong = Fails("plan add-sector 10,10 11,11 --alt 2000 --phase cruise");
    EXPECT_NE(wrong.err.find("FROM must name it"), std::string::npos) << wrong.err;

    auto lines = Lines(Ok("--json plan show").out);
    ASSERT_EQ(lines.size(), 4u);
    for (int i = 0; i < 3; ++i) {
        const Json& props = lines[i]["props"];
        EXPECT_EQ(props.size(), 20u);
        EXPECT_EQ(props["400"], i + 1);
    }
    const Json& cruise = lines[1]["props"];
    EXPECT_EQ(cruise["401"], lines[0]["props"]["402"]);
    EXPECT_EQ(cruise["408"], 114);
    EXPECT_EQ(cruise["410"], 1.0);
    // Wind at 4500 ft from the default table: halfway between 2000 (110/15) and 6000 (120/20).
    EXPECT_EQ(cruise["412"], "116/18");
    double time = cruise["406"].get<double>() / cruise["409"].get<int>() * 60.0;
    EXPECT_DOUBLE_EQ(cruise["407"].get<double>(), time);
    EXPECT_DOUBLE_EQ(cruise["413"].get<double>(), time * 8.5 / 60.0);
    EXPECT_EQ(lines[2]["props"]["412"], "000/00");
    EXPECT_EQ(lines[3]["sectors"], 3);

    ToolRun table = Ok("plan show");
    EXPECT_NE(table.out.find("Total"), std::string::npos);
    EXPECT_NE(table.out.find("116/18"), std::string::npos);

    // Fuel plan from the same sectors: G-CESS taxi 1.0 US gal.
    Json fuel = Lines(Ok("--json fuel --contingency 10 --holding 5").out).at(0);
    EXPECT_EQ(fuel["units"], "Fuel units: Usgal");
    EXPECT_EQ(fuel["taxi"], "1.0");
    double trip = fuel["tripFuel"];
    EXPECT_EQ(fuel["totalFuel"], static_cast<int>(trip * 1.1 + 1.0 + 0.5) + 5);
    Json loaded = Lines(Ok("--json fuel --in-tanks 40").out).at(0);
    EXPECT_EQ(loaded["mode"], "loaded");
    EXPECT_EQ(loaded["total"], "40");

    // Another aircraft's airspeeds; reversal; deleting the middle sector chains the route.
    Ok("aircraft use G-MALI");
    EXPECT_EQ(Lines(Ok("--json plan show").out)[1]["props"]["408"], 170);
    Fails("aircraft use G-NONE");
    Ok("plan reverse");
    lines = Lines(Ok("--json plan show").out);
    EXPECT_EQ(lines[0]["props"]["414"], 314700);
    Ok("plan delete-sector 2");
    lines = Lines(Ok("--json plan show").out);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[1]["props"]["414"], lines[0]["props"]["416"]);
    EXPECT_EQ(lines[1]["props"]["400"], 2);
    Fails("plan delete-sector 3");
}

TEST_F(PlanningCommands, PlansAndWindTable) {
    Ok("plan new One");
    Ok("plan new Two");
    ToolRun active = Fails("plan delete Two");
    EXPECT_NE(active.err.find("Cannot delete - active plan"), std::string::npos);
    Ok("plan open One");
    Ok("plan delete Two");
    auto plans = Lines(Ok("--json plan list").out);
    ASSERT_EQ(plans.size(), 1u);
    EXPECT_EQ(plans[0]["active"], true);
    Fails("plan new One");

    EXPECT_EQ(Lines(Ok("--json wind at 4000").out)[0],
              Json::parse(R"({"direction": 115, "speed": 17, "temperature": 7.0})"));
    Ok("wind add 4000 200 30 -2");
    EXPECT_EQ(Lines(Ok("--json wind list").out)[2]["line"],
              "04000         200        30        -2");
    Ok("wind edit 3 4000 210 30 -2");
    Ok("wind delete 1");
    Ok("wind delete 1");
    ToolRun refused = Fails("wind delete 1");
    EXPECT_NE(refused.err.find("Cannot have less than 3 wind table records"), std::string::npos);
    Fails("wind edit 9 1 1 1 1");
    Fails("wind add 1000 x 1 1");
}

}  // namespace
