// Recomputing a plan: winds, headings, ground speed, time and fuel, the chained route, reversal.
#include <gtest/gtest.h>

#include <cmath>

#include "planning/sector_computation.hpp"
#include "planning/sector_dialog.hpp"
#include "planning_fixture.hpp"

namespace aerix::testing {
namespace {

using SectorComputationTest = PlanningTest;

constexpr std::int32_t kDeg = 6000;  // one degree in CentiMinutes

TEST(SectorFigures, GroundSpeedRoundsHalfUpAndHeadingsFold) {
    EXPECT_EQ(RoundGroundSpeed(99.5), 100);
    EXPECT_EQ(RoundGroundSpeed(99.49), 99);
    EXPECT_EQ(RoundGroundSpeed(0.4), 0);
    EXPECT_DOUBLE_EQ(MagneticHeadingOf(10.0, 355.0), 5.0);
    EXPECT_DOUBLE_EQ(MagneticHeadingOf(-5.0, 2.0), 357.0);
    EXPECT_DOUBLE_EQ(MagneticHeadingOf(-10.0, 5.0), 355.0);
    EXPECT_DOUBLE_EQ(MagneticHeadingOf(0.0, 360.0), 0.0);
}

// Three legs of G-CESS worked as on a flight computer: east along the equator in still air,
// north into a 16 kt headwind, west with the same wind on the beam.
TEST_F(SectorComputationTest, AWholePlanWorkedByHand) {
    SetWinds({{0, 0, 16, 15}, {3500, 0, 16, 8}, {9000, 0, 16, 0}});
    SectorRecord east = Leg(1, 0, 0, 0, kDeg, 2, u"000/00", u"3500");
    east.Variation = 3.0;
    SectorRecord north = Leg(2, 0, kDeg, kDeg, kDeg, 1, u"", u"3500");
    north.Variation = -2.0;
    SectorRecord west = Leg(3, kDeg, kDeg, kDeg, 0, 3, u"", u"9000");
    WriteSectors({east, north, west});
    RecomputePlanRoute(g_app.settings, g_app.plan, 1);
    auto s = Sectors();
    ASSERT_EQ(s.size(), 3u);

    // 60 nm at 114 kt in still air; 8.5 gal/h cruise.
    EXPECT_EQ(s[0].WindText, u"000/00");
    EXPECT_NEAR(s[0].TrueCourse, 90.0, 1e-9);
    EXPECT_NEAR(s[0].Distance, 60.0, 1e-9);
    EXPECT_EQ(s[0].TrueAirspeed, 114);
    EXPECT_EQ(s[0].GroundSpeed, 114);
    EXPECT_NEAR(s[0].MagneticHeading, 93.0, 1e-9);
    EXPECT_NEAR(s[0].Time, 60.0 / 114.0 * 60.0, 1e-9);
    EXPECT_NEAR(s[0].Fuel, 60.0 / 114.0 * 8.5, 1e-9);

    // Climb at 76 kt into 000/16: 60 kt over the ground, an hour at 15 gal/h.
    EXPECT_EQ(s[1].WindText, u"000/16");
    EXPECT_NEAR(s[1].TrueCourse, 360.0, 0.05);
    EXPECT_EQ(s[1].TrueAirspeed, 76);
    EXPECT_EQ(s[1].GroundSpeed, 60);
    EXPECT_NEAR(s[1].MagneticHeading, 358.0, 0.05);
    EXPECT_NEAR(s[1].Time, 60.0, 1e-4);
    EXPECT_NEAR(s[1].Fuel, 15.0, 1e-4);

    // Descent at 107 kt due west with 16 kt from the north: crab asin(16/107) to the right.
    double departure = 60.0 * std::cos(1.0 * M_PI / 180.0);
    double crab = std::asin(16.0 / 107.0) * 180.0 / M_PI;
    int gs = static_cast<int>(std::lround(std::sqrt(107.0 * 107.0 - 16.0 * 16.0)));
    EXPECT_EQ(s[2].WindText, u"000/16");
    EXPECT_NEAR(s[2].TrueCourse, 270.0, 1e-6);
    EXPECT_NEAR(s[2].Distance, departure, 1e-3);
    EXPECT_EQ(s[2].GroundSpeed, gs);
    EXPECT_NEAR(s[2].MagneticHeading, 270.0 + crab, 1e-6);
    EXPECT_NEAR(s[2].Time, s[2].Distance / gs * 60.0, 1e-9);
    EXPECT_NEAR(s[2].Fuel, s[2].Time * 7.5 / 60.0, 1e-9);

    // Nothing changed: the same values again.
    RecomputePlan(g_app.settings, g_app.plan, 0);
    auto again = Sectors();
    for (std::size_t i = 0; i < s.size(); ++i) {
        EXPECT_EQ(again[i].Time, s[i].Time);
        EXPECT_EQ(again[i].MagneticHeading, s[i].MagneticHeading);
        EXPECT_EQ(again[i].WindText, s[i].WindText);
    }
    EXPECT_TRUE(platform_.Ui().Boxes().empty());
}

TEST_F(SectorComputationTest, WindFromTheTableUnlessStillAir) {
    SetWinds({{2000, 350, 20, 10}, {5000, 10, 30, -5}, {8000, 20, 40, -20}});
    WriteSectors({Leg(1, 0, 0, 0, kDeg, 2, u"", u"3500"),
                  Leg(2, 0, kDeg, 0, 2 * kDeg, 2, u"000/00", u"3500"),
                  Leg(3, 0, 2 * kDeg, 0, 3 * kDeg, 2, u"123/45", u"3500ft")});
    RecomputePlanRoute(g_app.settings, g_app.plan, 0);
    auto s = Sectors();
    EXPECT_EQ(s[0].WindText, u"360/25");
    EXPECT_EQ(s[1].WindText, u"000/00");
    EXPECT_EQ(s[2].WindText, u"360/25");  // the altitude's leading digits count
    // refreshAirspeeds 0 keeps the sector's own (here unset) airspeed; 1 takes the aircraft's.
    EXPECT_EQ(s[0].TrueAirspeed, 0);
    RecomputePlan(g_app.settings, g_app.plan, 1);
    EXPECT_EQ(Sectors()[0].TrueAirspeed, 114);
}

TEST_F(SectorComputationTest, ZeroGroundSpeedIsNotGuarded) {
    SetWinds({{0, 270, 114, 0}, {5000, 270, 114, 0}, {9000, 270, 114, 0}});
    WriteSectors({Leg(1, 0, kDeg, 0, 0, 2)});
    RecomputePlanRoute(g_app.settings, g_app.plan, 1);
    auto s = Sectors();
    EXPECT_EQ(s[0].GroundSpeed, 0);
    EXPECT_TRUE(std::isinf(s[0].Time));
    EXPECT_TRUE(std::isinf(s[0].Fuel));
}

TEST_F(SectorComputationTest, NothingIsComputedWithoutTheAircraft) {
    WriteSectors({Leg(1, 0, 0, 0, kDeg)});
    g_app.settings.AircraftReg.assign(u"G-NONE");
    RecomputePlanRoute(g_app.settings, g_app.plan, 1);
    EXPECT_EQ(Sectors()[0].Distance, 0.0);
    g_app.settings.AircraftReg.assign(u"G-CESS");
    while (DeleteAircraft(0)) {
    }
    RecomputePlanRoute(g_app.settings, g_app.plan, 1);
    EXPECT_EQ(Sectors()[0].Distance, 0.0);
    EXPECT_TRUE(platform_.Ui().Boxes().empty());
}

TEST_F(SectorComputationTest, DeletingTheMiddleSectorChainsTheRoute) {
    WriteSectors({Leg(1, 0, 0, 0, kDeg), Leg(2, 0, kDeg, kDeg, kDeg), Leg(3, kDeg, kDeg, kDeg, 0)});
    RecomputePlanRoute(g_app.settings, g_app.plan, 1);
    ASSERT_TRUE(DeletePlanSector(g_app.settings, g_app.plan, 1));
    auto s = Sectors();
    ASSERT_EQ(s.size(), 2u);
    EXPECT_EQ(g_app.plan.PlanSectorCount, 2u);
    EXPECT_EQ(s[1].SectorNumber, 2);
    EXPECT_EQ(s[1].StartLatitude, s[0].EndLatitude);
    EXPECT_EQ(s[1].StartLongitude, s[0].EndLongitude);
    EXPECT_EQ(s[1].Text401, s[0].Text402);
    // From (0, 1E) to (1N, 0): south-west of north, now recomputed.
    EXPECT_NEAR(s[1].TrueCourse, 315.0, 0.1);
    EXPECT_NEAR(s[1].Distance, std::sqrt(2.0) * 60.0, 0.1);
    EXPECT_FALSE(DeletePlanSector(g_app.settings, g_app.plan, 5));
}

TEST_F(SectorComputationTest, ReversingSwapsEndsAndOrder) {
    WriteSectors({Leg(1, 0, 0, 0, kDeg), Leg(2, 0, kDeg, kDeg, kDeg), Leg(3, kDeg, kDeg, kDeg, 0)});
    RecomputePlanRoute(g_app.settings, g_app.plan, 1);
    auto before = Sectors();
    ReversePlan(g_app.settings, g_app.plan);
    auto s = Sectors();
    ASSERT_EQ(s.size(), 3u);
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        const SectorRecord& was = before[2 - i];
        EXPECT_EQ(s[i].SectorNumber, i + 1);
        EXPECT_EQ(s[i].StartLatitude, was.EndLatitude);
        EXPECT_EQ(s[i].EndLongitude, was.StartLongitude);
        EXPECT_EQ(s[i].Text401, was.Text402);
        EXPECT_EQ(s[i].Text402, was.Text401);
        EXPECT_NEAR(std::fmod(s[i].TrueCourse - was.TrueCourse + 360.0, 360.0), 180.0, 0.1);
        EXPECT_NEAR(s[i].Distance, was.Distance, 1e-6);
    }
}

}  // namespace
}  // namespace aerix::testing
