// Weight and balance worked by hand for the default aircraft, the envelope test on its edges, and
// the loading and result dialogs passing the loads between them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "aircraft/aircraft.hpp"
#include "aircraft/envelope_graph.hpp"
#include "aircraft/weight_balance.hpp"
#include "aircraft/weight_balance_dialogs.hpp"
#include "app/app_state.hpp"
#include "app/default_data.hpp"
#include "platform/recording_canvas.hpp"
#include "test_platform.hpp"

namespace aerix::testing {
namespace {

const std::vector<EnvelopePoint> kCessEnvelope = {{35.0, 1500}, {35.0, 1950}, {39.5, 2400},
                                                  {47.3, 2400}, {47.3, 1500}, {35.0, 1500}};

AircraftRecord Cess() {
    AircraftRecord a;
    a.Name = u"G-CESS";
    a.MaxTakeoffWeight = 2400;
    a.MaxRampWeight = 2407;
    a.MaxZeroFuelWeight = 2387;
    a.TaxiFuel = 1.0;
    a.WeightUnits = kWeightPounds;
    a.FuelUnits = kFuelUsGallons;
    a.ArmUnits = kArmInches;
    a.GraphArmMin = 34.0;
    a.GraphArmMax = 48.0;
    a.GraphWeightMin = 1500.0;
    a.GraphWeightMax = 2500.0;
    return a;
}

TEST(WeightBalance, CessnaWithPilotPassengerAndFortyGallons) {
    // 40 US gal at sg 0.72: 0.72 x 40 x 8.32674 = 239.810112 lb.
    double fuel = FuelWeight(40.0, kFuelUsGallons, kWeightPounds);
    EXPECT_NEAR(fuel, 239.810112, 1e-9);
    // APS 1467 @ 39.0 = 57213; ROW1 340 @ 37.0 = 12580; fuel @ 46.0 = 11031.265152.
    // Total 2046.810112 lb, moment 80824.265152, arm 80824.265152 / 2046.810112 = 39.48792.
    // Forward limit at that weight: 35 + (2046.8 - 1950) / 450 x 4.5 = 35.97; aft 47.3: inside.
    auto r = ComputeWeightBalance(
        Cess(), {{u"APS", 1, 39.0, 1467}, {u"ROW1", 3, 37.0, 340}, {u"FUEL", 2, 46.0, fuel}},
        kCessEnvelope);
    EXPECT_NEAR(r.Weight, 2046.810112, 1e-9);
    EXPECT_NEAR(r.Moment, 80824.265152, 1e-6);
    EXPECT_NEAR(r.Arm, 39.4879157, 1e-6);
    EXPECT_NEAR(r.FuelWeight, fuel, 1e-12);
    // Taxi fuel 1 US gal = 5.995 lb burnt before take-off; zero fuel 1807 lb @ (69793 / 1807).
    EXPECT_NEAR(r.TakeoffWeight, 2046.810112 - 5.9952528, 1e-6);
    EXPECT_NEAR(r.ZeroFuelWeight, 1807.0, 1e-9);
    EXPECT_NEAR(r.ZeroFuelArm, 69793.0 / 1807.0, 1e-9);
    EXPECT_TRUE(r.HasEnvelope);
    EXPECT_TRUE(r.Within());
    EXPECT_EQ(r.Verdict(), "within envelope");
}

TEST(WeightBalance, EdgesAndCornersCountAsInside) {
    struct Case {
        double arm, weight;
        bool inside;
    } cases[] = {
        {35.0, 1700, true},     // on the vertical forward edge
        {37.25, 2175, true},    // on the sloping forward edge, halfway
        {47.3, 2400, true},     // a corner
        {40.0, 2400, true},     // on the top edge
        {34.999, 1700, false},  // just forward
        {37.0, 2200, false},    // forward of the sloping limit (37.5 at 2200)
        {41.0, 2400.5, false},  // just above the top
        {47.31, 2000, false},   // aft
    };
    for (const Case& c : cases)
        EXPECT_EQ(InsideEnvelope(kCessEnvelope, c.arm, c.weight), c.inside)
            << c.arm << ", " << c.weight;
    struct Side {
        double arm, weight;
        const char* side;
    } sides[] = {{34.0, 1700, "forward of"}, {37.0, 2200, "forward of"}, {48.0, 2000, "aft of"},
                 {40.0, 2500, "above"},      {40.0, 1400, "below"},      {40.0, 2000, ""}};
    for (const Side& c : sides)
        EXPECT_EQ(EnvelopeSide(kCessEnvelope, c.arm, c.weight), c.side)
            << c.arm << ", " << c.weight;
    // A computed arm that lands on the edge within rounding stays inside: 1000 @ 35 and
    // 700 @ 35 sum to 1700 @ 35.0 (to the last bit or nearly).
    auto r = ComputeWeightBalance(Cess(), {{u"APS", 1, 35.0, 1000}, {u"ROW1", 3, 35.0, 700}},
                                  kCessEnvelope);
    EXPECT_TRUE(r.Within()) << r.Arm;
}

TEST(WeightBalance, FewerThanThreeCornersIsNoEnvelopeNotAVerdict) {
    for (auto env : {std::vector<EnvelopePoint>{},
                     std::vector<EnvelopePoint>{{35, 1500}, {47, 2400}, {35, 1500}},
                     std::vector<EnvelopePoint>{{35, 1500}, {35, 1500}, {40, 2000}, {40, 2000}}}) {
        auto r = ComputeWeightBalance(Cess(), {{u"APS", 1, 39.0, 1467}}, env);
        EXPECT_FALSE(r.HasEnvelope);
        EXPECT_FALSE(r.Within());
        EXPECT_EQ(r.Verdict(), "no envelope");
    }
}

TEST(WeightBalance, NamesEachWeightLimitExceeded) {
    // 1467 + 340 + 340 + 120 + 239.81 = 2506.81 lb: over ramp 2407, take-off (2500.8) 2400 and
    // zero-fuel (2267 < 2387) not.
    double fuel = FuelWeight(40.0, kFuelUsGallons, kWeightPounds);
    auto r = ComputeWeightBalance(Cess(),
                                  {{u"APS", 1, 39.0, 1467},
                                   {u"ROW1", 3, 37.0, 340},
                                   {u"ROW2", 3, 73.0, 340},
                                   {u"BAG1", 4, 95.0, 120},
                                   {u"FUEL", 2, 46.0, fuel}},
                                  kCessEnvelope);
    EXPECT_FALSE(r.Within());
    EXPECT_EQ(r.Verdict(), "OUT OF ENVELOPE");
    EXPECT_EQ(r.LimitsExceeded,
              (std::vector<std::string>{"max ramp weight 2407 lb", "max take-off weight 2400 lb"}));
    // Within the envelope by CG but over the zero-fuel limit alone: still out.
    AircraftRecord tight = Cess();
    tight.MaxZeroFuelWeight = 1800;
    auto z = ComputeWeightBalance(
        tight, {{u"APS", 1, 39.0, 1467}, {u"ROW1", 3, 37.0, 340}, {u"FUEL", 2, 46.0, 100}},
        kCessEnvelope);
    EXPECT_TRUE(z.InsideEnvelope);
    EXPECT_EQ(z.LimitsExceeded, std::vector<std::string>{"max zero-fuel weight 1800 lb"});
    EXPECT_EQ(z.Verdict(), "OUT OF ENVELOPE");
}

TEST(WeightBalance, FuelUnitsToWeightUnits) {
    struct Case {
        double quantity;
        int fuel, weight;
        double expect;
    } cases[] = {
        {100, kFuelLitres, kWeightKilograms, 72.0},        // 0.72 kg a litre
        {100, kFuelLitres, kWeightPounds, 72.0 * 2.2046},  // the fuel factor, not 2.204622
        {10, kFuelImperialGallons, kWeightPounds, 72.0},   // 10 lb of water a gallon x 0.72
        {50, kFuelKilograms, kWeightKilograms, 50.0},
        {50, kFuelPounds, kWeightPounds, 50.0},
        {220.46, kFuelPounds, kWeightKilograms, 100.0},
        {50, kFuelKilograms, kWeightPounds, 110.23},
    };
    for (const Case& c : cases)
        EXPECT_NEAR(FuelWeight(c.quantity, c.fuel, c.weight), c.expect, 1e-9)
            << c.quantity << " " << c.fuel << " -> " << c.weight;
    EXPECT_TRUE(std::isnan(FuelWeight(1, 9, kWeightPounds)));
    EXPECT_TRUE(std::isnan(FuelWeight(1, kFuelLitres, 0)));
}

TEST(EnvelopeGraph, PolygonInsideThePlotAndMarkerOnTheLoadedPoint) {
    AircraftRecord a = Cess();
    auto r =
        ComputeWeightBalance(a, {{u"APS", 1, 39.0, 1467}, {u"ROW1", 3, 37.0, 340}}, kCessEnvelope);
    platform::RecordingCanvas canvas(240, 200);
    platform::Rect area{0, 0, 240, 200};
    DrawEnvelopeGraph(canvas, area, a, kCessEnvelope, r);
    EnvelopeGraphFrame f = MakeEnvelopeGraphFrame(area, a, kCessEnvelope, r);
    // The aircraft's own ranges hold everything: used as they are.
    EXPECT_EQ(f.ArmMin, 34.0);
    EXPECT_EQ(f.WeightMax, 2500.0);

    auto polygons = canvas.CallsOf(platform::CanvasCall::Polygon);
    ASSERT_EQ(polygons.size(), 1u);
    ASSERT_EQ(polygons[0].points.size(), 5u);  // the closing repeat is not drawn twice
    for (const auto& p : polygons[0].points) {
        EXPECT_GE(p.x, f.Plot.left);
        EXPECT_LE(p.x, f.Plot.right);
        EXPECT_GE(p.y, f.Plot.top);
        EXPECT_LE(p.y, f.Plot.bottom);
    }
    // Arm 35 at 1500 lb: 1/14 across, on the bottom (1500 is the graph's lowest weight).
    EXPECT_EQ(polygons[0].points[0], f.Map(35.0, 1500));
    EXPECT_EQ(polygons[0].points[0].y, f.Plot.bottom);

    auto marks = canvas.CallsOf(platform::CanvasCall::Ellipse);
    ASSERT_EQ(marks.size(), 1u);
    platform::Point at = f.Map(r.Arm, r.Weight);
    EXPECT_EQ((marks[0].rect.left + marks[0].rect.right - 1) / 2, at.x);
    EXPECT_EQ((marks[0].rect.top + marks[0].rect.bottom - 1) / 2, at.y);
    EXPECT_EQ(marks[0].brush.color, kLoadedInside);
    // Tick labels on both axes and the units.
    auto texts = canvas.Texts();
    for (const char* t : {"1500", "2000", "2500", "35", "40", "45", "lb", "in"})
        EXPECT_NE(std::find(texts.begin(), texts.end(), t), texts.end()) << t;
}

TEST(EnvelopeGraph, WidensToShowAPointOffTheGraphAndTicksAreRound) {
    AircraftRecord a = Cess();
    auto r = ComputeWeightBalance(a, {{u"APS", 1, 30.0, 2600}}, kCessEnvelope);
    EnvelopeGraphFrame f = MakeEnvelopeGraphFrame({0, 0, 240, 200}, a, kCessEnvelope, r);
    EXPECT_LT(f.ArmMin, 30.0);
    EXPECT_GT(f.WeightMax, 2600.0);
    platform::Point p = f.Map(30.0, 2600);
    EXPECT_GT(p.x, f.Plot.left);
    EXPECT_GT(p.y, f.Plot.top);

    EXPECT_EQ(GraphTicks(34, 48, 4), (std::vector<double>{35, 40, 45}));
    EXPECT_EQ(GraphTicks(1500, 2500, 4), (std::vector<double>{1500, 2000, 2500}));
    EXPECT_EQ(GraphTicks(0.5, 1.1, 4), (std::vector<double>{0.6, 0.8, 1.0}));
    EXPECT_TRUE(GraphTicks(5, 5, 4).empty());
}

class WeightBalanceDialogs : public ::testing::Test {
  protected:
    void SetUp() override {
        g_app.settings.AircraftReg.assign(u"G-CESS");
        CreateDefaultData();
    }
    TestPlatform platform_;
};

TEST_F(WeightBalanceDialogs, LoadingPassesToTheResult) {
    WeightBalanceLoadingDialog load{g_app.settings, g_app.aircraft};
    ASSERT_TRUE(load.Open());
    const auto& rows = load.Rows();
    ASSERT_EQ(rows.size(), 6u);
    EXPECT_TRUE(rows[0].Fixed);
    EXPECT_EQ(rows[0].Text, "1467");
    EXPECT_EQ(load.Label(1), "FUEL (US gal)");
    EXPECT_EQ(load.Label(2), "ROW1 (lb)");
    load.SetText(0, "1");  // the basic row stays the aircraft's
    load.SetText(1, "40");
    load.SetText(2, "340");
    EXPECT_EQ(load.Note(1), "= 239.8 lb");
    ASSERT_TRUE(load.Ok());
    EXPECT_EQ(g_app.aircraft.WbLoading.FuelQuantity, 40.0);

    WeightBalanceResultDialog result{g_app.aircraft};
    ASSERT_TRUE(result.Open());
    EXPECT_NEAR(result.Result().Arm, 39.4879157, 1e-6);
    EXPECT_EQ(result.VerdictLines().front(), "within envelope");
    auto figures = result.Figures();
    EXPECT_EQ(figures[0], (std::pair<std::string, std::string>{"Weight", "2046.8 lb"}));
    EXPECT_EQ(figures[2], (std::pair<std::string, std::string>{"CG arm", "39.49 in"}));

    // Opened again, the loads are offered as they were.
    WeightBalanceLoadingDialog again{g_app.settings, g_app.aircraft};
    ASSERT_TRUE(again.Open());
    EXPECT_EQ(again.Rows()[1].Text, "40");
    EXPECT_EQ(again.Rows()[2].Text, "340");
}

TEST_F(WeightBalanceDialogs, BadLoadsAreRefusedAndNothingPasses) {
    WeightBalanceLoadingDialog load{g_app.settings, g_app.aircraft};
    ASSERT_TRUE(load.Open());
    for (const char* bad : {"-5", "lots", "1e9", "nan"}) {
        load.SetText(2, bad);
        EXPECT_FALSE(load.Ok()) << bad;
        EXPECT_EQ(platform_.Ui().BoxTexts().back(), "ROW1: enter a weight from 0 to 100000 lb");
    }
    EXPECT_TRUE(g_app.aircraft.WbLoading.Aircraft.empty());
    WeightBalanceResultDialog result{g_app.aircraft};
    EXPECT_FALSE(result.Open());

    g_app.settings.AircraftReg.assign(u"G-GONE");
    WeightBalanceLoadingDialog none{g_app.settings, g_app.aircraft};
    EXPECT_FALSE(none.Open());
}

TEST_F(WeightBalanceDialogs, SenecaForwardBaggageTakesItForwardOfTheLimit) {
    // APS 3212 @ 88.5 = 284262; FWD BAGS 400 @ 22.5 = 9000: 3612 lb @ 81.19, while the forward
    // limit at 3612 lb is 83.1 + 12 / 200 x 1.1 = 83.17.
    g_app.settings.AircraftReg.assign(u"G-SNCA");
    WeightBalanceLoadingDialog load{g_app.settings, g_app.aircraft};
    ASSERT_TRUE(load.Open());
    for (std::size_t i = 0; i < load.Rows().size(); ++i)
        if (load.Rows()[i].Station.StationName == u"FWD BAGS")
            load.SetText(i, "400");
    ASSERT_TRUE(load.Ok());
    WeightBalanceResultDialog result{g_app.aircraft};
    ASSERT_TRUE(result.Open());
    EXPECT_NEAR(result.Result().Arm, 293262.0 / 3612.0, 1e-9);
    auto lines = result.VerdictLines();
    EXPECT_EQ(lines[0], "OUT OF ENVELOPE");
    EXPECT_EQ(lines[1], "CG 81.19 in forward of the envelope at 3612 lb");
}

}  // namespace
}  // namespace aerix::testing
