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
    EXPECT_NE(table.out.find("116T/18"), std::string::npos);

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

TEST_F(PlanningCommands, HeadwindFasterThanTheAircraftShowsTheSectorAsImpossible) {
    Ok("plan new Trip");
    Ok("wind add 3000 270 150 5");  // 150 kt on the nose of a 114 kt Cessna going west
    Ok("plan add-sector 51,0 51,-1 --alt 3000 --phase cruise --variation 0");
    Ok("plan add-sector 51,-1 51,-2 --alt 3000 --phase cruise --variation 0 --still-air");

    std::string table = Ok("plan show").out;
    EXPECT_NE(table.find("270T/150"), std::string::npos) << table;
    EXPECT_NE(table.find("GS <= 0"), std::string::npos) << table;
    EXPECT_NE(table.find(" 270T 270M "), std::string::npos) << table;
    EXPECT_NE(table.find("   114 "), std::string::npos) << table;  // the still-air sector
    std::string total = table.substr(table.find("Total"));
    EXPECT_NE(total.find("--:--"), std::string::npos) << total;
    EXPECT_NE(total.find("---"), std::string::npos) << total;
    EXPECT_EQ(table.find("-0:"), std::string::npos) << table;

    auto lines = Lines(Ok("--json plan show").out);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0]["log"], Json::parse(R"({"from": "N51°00.000 E000°00.000",
        "to": "N51°00.000 W001°00.000", "windTrue": "270T/150", "trueCourse": "270T",
        "magneticHeading": "270M", "distance": "37.8", "groundSpeed": "GS <= 0",
        "time": "--:--", "fuel": "---"})"));
    EXPECT_EQ(lines[1]["log"]["groundSpeed"], "114");
    EXPECT_EQ(lines[2]["time"], "--:--");
    EXPECT_EQ(lines[2]["fuel"], "---");

    // The fuel plan names no figure built on the impossible sector, and never a wrapped total.
    for (const char* args : {"fuel", "--json fuel"}) {
        std::string out = Ok(args).out;
        EXPECT_EQ(out.find("4294967"), std::string::npos) << out;
    }
    Json fuel = Lines(Ok("--json fuel --contingency 10").out).at(0);
    EXPECT_EQ(fuel["cruise"], "---");
    EXPECT_EQ(fuel["climb"], "0.0");
    EXPECT_EQ(fuel["total"], "---");
    EXPECT_EQ(fuel["totalFuel"], "---");
    EXPECT_EQ(fuel["tripFuel"], "---");
    Json loaded = Lines(Ok("--json fuel --in-tanks 40").out).at(0);
    EXPECT_EQ(loaded["reserve"], "---");
    EXPECT_EQ(loaded["total"], "40");

    // A lighter wind makes it flyable again: figures everywhere.
    Ok("wind edit 3 3000 270 50 5");
    lines = Lines(Ok("--json plan show").out);
    EXPECT_EQ(lines[0]["log"]["groundSpeed"], "64");
    EXPECT_TRUE(lines[2]["time"].is_number());
    // 35 min at 64 kt and 20 min at 114 kt, 8.5 US gal an hour, 1 of taxi: 8.8 rounded.
    EXPECT_EQ(Lines(Ok("--json fuel").out).at(0)["totalFuel"], 9);
}

TEST_F(PlanningCommands, IcaoIdentsFindTheWorldsAirports) {
    Ok("plan new Trip");
    // No airport is named EGKK, so the idents are taken: Gatwick to Heathrow.
    Ok("plan add-sector EGKK EGLL --alt 2000 --phase cruise --db World");
    Ok("plan insert-sector 1 EGLF --icao --alt 2000 --phase cruise --db World");
    auto lines = Lines(Ok("--json plan show").out);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0]["log"]["from"], "London Gatwick Airport");
    EXPECT_EQ(lines[0]["log"]["to"], "London Heathrow Airport");
    EXPECT_EQ(lines[1]["log"]["to"], "Farnborough Airport");
    EXPECT_EQ(lines[1]["props"]["404"], "EGLF");

    // Without --icao only a whole ident stands in for a name; with it, part of one matches.
    ToolRun part = Fails("plan add-sector EGLF EGK --alt 2000 --phase cruise --db World");
    EXPECT_NE(part.err.find("no waypoint matches \"EGK\""), std::string::npos) << part.err;
    ToolRun many = Fails("plan add-sector EGLF EGK --icao --alt 2000 --phase cruise --db World");
    EXPECT_NE(many.err.find("London Gatwick Airport (EGKK)"), std::string::npos) << many.err;
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
