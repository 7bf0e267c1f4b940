// aerix-tool wb and aircraft show against the default aircraft, run as a pilot would.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "support/test_platform.hpp"
#include "tool_run.hpp"

namespace {

using aerix::testing::RunToolAt;
using aerix::testing::TempDir;
using aerix::testing::ToolRun;
using Json = nlohmann::json;

class WeightBalanceCommands : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(RunToolAt(home_.Path(), "init").status, 0); }
    Json Wb(const std::string& args, std::string* text = nullptr) {
        ToolRun r = RunToolAt(home_.Path(), "--json wb " + args);
        EXPECT_EQ(r.status, 0) << args << ": " << r.err;
        if (text)
            *text = r.out;
        return r.status == 0 ? Json::parse(r.out) : Json::object();
    }
    TempDir home_;
};

TEST_F(WeightBalanceCommands, CessnaWithTwoAboardAndFuelIsWithin) {
    // APS 1467 @ 39, ROW1 340 @ 37, 40 US gal = 239.810112 lb @ 46: 2046.810112 lb, moment
    // 80824.265152, arm 39.48792.
    std::string text;
    Json r = Wb("--aircraft g-cess --load row1=340 --fuel 40", &text);
    // The four promised keys come first, in order.
    std::size_t w = text.find("\"weight\""), m = text.find("\"moment\""), a = text.find("\"arm\""),
                v = text.find("\"withinEnvelope\"");
    EXPECT_EQ(w, 1u);
    EXPECT_TRUE(w < m && m < a && a < v) << text;
    EXPECT_NEAR(r["weight"].get<double>(), 2046.810112, 1e-9);
    EXPECT_NEAR(r["moment"].get<double>(), 80824.265152, 1e-6);
    EXPECT_NEAR(r["arm"].get<double>(), 39.4879157, 1e-6);
    EXPECT_EQ(r["withinEnvelope"], true);
    EXPECT_NEAR(r["fuelWeight"].get<double>(), 239.810112, 1e-9);
    EXPECT_EQ(r["aircraft"], "G-CESS");
}

TEST_F(WeightBalanceCommands, ForwardOfTheLimitAndOverweightAreOut) {
    Json fwd = Wb("--aircraft G-SNCA --load \"fwd bags=400\"");
    EXPECT_EQ(fwd["withinEnvelope"], false);
    EXPECT_EQ(fwd["insideEnvelope"], false);
    EXPECT_EQ(fwd["envelopeSide"], "forward of");
    EXPECT_TRUE(fwd["limits"].empty());
    Json heavy = Wb("--aircraft G-CESS --load ROW1=340 --load ROW2=340 --load BAG1=120 --fuel 40");
    EXPECT_EQ(heavy["withinEnvelope"], false);
    EXPECT_EQ(heavy["limits"],
              Json::array({"max ramp weight 2407 lb", "max take-off weight 2400 lb"}));
}

TEST_F(WeightBalanceCommands, BadArgumentsFailNamingTheStations) {
    struct Case {
        const char* args;
        const char* says;
    } cases[] = {
        {"--aircraft G-NONE", "no aircraft registered \"G-NONE\" (aircraft: G-ARCH"},
        {"--aircraft G-CESS --load ROW9=80", "no station \"ROW9\" on G-CESS (stations: APS, FUEL"},
        {"--aircraft G-CESS --load ROW1=-80", "from 0 to 100000 (stations of G-CESS: APS"},
        {"--aircraft G-CESS --load ROW1=eighty", "(stations of G-CESS"},
        {"--aircraft G-CESS --load ROW1", "write STATION=WEIGHT (stations of G-CESS"},
        {"--aircraft G-CESS --load APS=1000", "empty weight"},
        {"--aircraft G-CESS --load ROW1=80 --load row1=90", "loaded twice"},
        {"--aircraft G-CESS --fuel -1", "--fuel"},
    };
    for (const Case& c : cases) {
        ToolRun r = RunToolAt(home_.Path(), std::string("wb ") + c.args);
        EXPECT_EQ(r.status, 1) << c.args;
        EXPECT_NE(r.err.find(c.says), std::string::npos) << c.args << ": " << r.err;
    }
}

TEST_F(WeightBalanceCommands, AircraftShowListsFiguresStationsAndEnvelope) {
    ToolRun r = RunToolAt(home_.Path(), "--json aircraft show G-C152");
    ASSERT_EQ(r.status, 0) << r.err;
    Json a = Json::parse(r.out);
    EXPECT_EQ(a["Empty weight arm (in)"], "29.93");
    EXPECT_EQ(a["Climb fuel flow (US gal/h)"], "12");
    EXPECT_EQ(a["Stations"].size(), 5u);
    EXPECT_EQ(a["Stations"][0]["kind"], "basic");
    EXPECT_EQ(a["Envelope (arm, weight)"].size(), 6u);
    EXPECT_EQ(RunToolAt(home_.Path(), "aircraft show G-NONE").status, 1);
}

}  // namespace
