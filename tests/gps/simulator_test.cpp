#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "app/app_state.hpp"
#include "gps/feeds.hpp"
#include "gps/position_text.hpp"
#include "gps/simulation_step.hpp"
#include "gps/simulator.hpp"
#include "support/test_platform.hpp"

namespace aerix {
namespace {

TEST(SimulationStep, FliesTwoSecondsOfDistanceEachSecond) {
    testing::TestPlatform platform;
    double lat = 0;
    double lon = 0;
    // Due east at 120 kt from 50N 0E: latitude kept exactly, 120/1800 nm a step.
    SimulationStep(g_app.gps.SimulatedDistance, 300000, 0, 90.0, 120, 1, lat, lon);
    double first = lat;
    double returned =
        SimulationStep(g_app.gps.SimulatedDistance, 300000, 0, 90.0, 120, 0, lat, lon);
    EXPECT_EQ(lat, first);
    EXPECT_DOUBLE_EQ(lat, 300000.0);
    EXPECT_EQ(returned, lat);
    EXPECT_NEAR(g_app.gps.SimulatedDistance * 3437.7467707849396, 2 * 120.0 / 1800, 1e-12);
    EXPECT_NEAR(lon * std::cos(50 * M_PI / 180) / 100, 2 * 120.0 / 1800, 1e-6);
    EXPECT_EQ(platform.Clock().SleptMs(), 2000);
    EXPECT_EQ(platform.Idle().ResetCount(), 2);
    // Due north: 1 nm is 100 CentiMinutes of latitude.
    SimulationStep(g_app.gps.SimulatedDistance, 0, 0, 0.0, 1800, 1, lat, lon);
    EXPECT_NEAR(lat, 100.0, 1e-9);
    EXPECT_NEAR(lon, 0.0, 1e-12);
}

struct Visit {
    int leg;
    double latitude, longitude, trueTrack, magneticTrack, groundSpeed;
    std::u16string positionText;
};

class SimulatorTest : public ::testing::Test {
  protected:
    SimulatorTest() {
        legs = {
            {60000, 0, 90.0, 5.0, 100}, {60000, 6000, 180.0, -2.0, 120}, {0, 6000, 270.0, 0.0, 90}};
        source = {[this](int i, SimLeg* leg) {
                      if (i < 0 || i >= static_cast<int>(legs.size()))
                          return false;
                      *leg = legs[static_cast<std::size_t>(i)];
                      return true;
                  },
                  [this] { return static_cast<int>(legs.size()); }};
    }

    // Runs the simulator, ending each leg after `stepsPerLeg` steps, for `legChanges` changes.
    std::vector<Visit> Fly(int stepsPerLeg, int legChanges) {
        std::vector<Visit> visits;
        std::stop_source stop;
        int steps = 0;
        int changes = 0;
        SimulatorThread(stop.get_token(), g_app.gps, g_app.leg, source, [&](int leg) {
            GpsFix f = g_app.gps.PublishedFix.Snapshot();
            visits.push_back({leg, f.latitude, f.longitude, f.trueTrack, f.magneticTrack,
                              f.groundSpeed, std::u16string(f.positionText.view())});
            if (++steps % stepsPerLeg == 0) {
                if (changes++ == legChanges)
                    stop.request_stop();
                g_app.leg.LegChange.store(1);
            }
        });
        return visits;
    }

    testing::TestPlatform platform;
    std::vector<SimLeg> legs;
    SimLegSource source;
};

TEST_F(SimulatorTest, FliesEachLegFromItsStartAndTheLastOneAgain) {
    auto visits = Fly(3, 3);
    ASSERT_EQ(visits.size(), 12u);
    int expectedLegs[] = {0, 0, 0, 1, 1, 1, 2, 2, 2, 2, 2, 2};
    for (std::size_t i = 0; i < visits.size(); ++i) {
        EXPECT_EQ(visits[i].leg, expectedLegs[i]) << i;
        // Every fix carries the text of its own position, the first of each leg too.
        EXPECT_EQ(visits[i].positionText, PositionText(visits[i].latitude, visits[i].longitude))
            << i;
    }
    // First step of each leg: the start point exactly, with the leg's tracks and speed.
    EXPECT_EQ(visits[0].latitude, 60000.0);
    EXPECT_DOUBLE_EQ(visits[0].magneticTrack, 95.0);
    EXPECT_EQ(visits[0].groundSpeed, 100.0);
    EXPECT_EQ(visits[3].longitude, 6000.0);
    EXPECT_DOUBLE_EQ(visits[3].magneticTrack, 178.0);
    EXPECT_EQ(visits[6].latitude, 0.0);
    EXPECT_EQ(visits[9].longitude, 6000.0);  // the last leg again, from its start
    EXPECT_EQ(visits[9].trueTrack, 270.0);
    // Then along the course: east, south, west.
    EXPECT_EQ(visits[2].latitude, 60000.0);
    EXPECT_GT(visits[2].longitude, visits[1].longitude);
    EXPECT_LT(visits[5].latitude, visits[4].latitude);
    EXPECT_LT(visits[8].longitude, visits[7].longitude);
    EXPECT_EQ(g_app.gps.PublishedFix.Snapshot().FixVoid, 0);
}

TEST_F(SimulatorTest, DirectToFliesFromItsStartWithThePreviousSpeed) {
    g_app.leg.DirectToStartLatitude.store(12000);
    g_app.leg.DirectToStartLongitude.store(-3000);
    g_app.leg.DirectToCourse.store(45);
    auto visits = Fly(2, 0);
    ASSERT_EQ(visits.size(), 2u);
    EXPECT_EQ(visits[0].latitude, 12000.0);
    EXPECT_EQ(visits[0].longitude, -3000.0);
    EXPECT_EQ(visits[1].trueTrack, 45.0);
    EXPECT_EQ(visits[1].latitude, 12000.0);  // no previous leg: speed 0
}

TEST_F(SimulatorTest, NoPlanEndsTheSimulation) {
    legs.clear();
    EXPECT_TRUE(Fly(1, 0).empty());
}

TEST_F(SimulatorTest, StartSimulationDoesNotReplaceARunningFeed) {
    g_app.settings.ViewMode = kViewMap;
    ASSERT_TRUE(StartSimulation(FeedWiring{g_app.gps, g_app.leg, g_app.settings, {}, source}));
    EXPECT_EQ(g_app.settings.GpsSource, kSourceSimulated);
    EXPECT_FALSE(StartSimulation(FeedWiring{g_app.gps, g_app.leg, g_app.settings, {}, source}));
    EXPECT_EQ(g_app.gps.SimulatorScreenX, 120);
    StopSimulation(g_app.gps, g_app.settings);
    EXPECT_EQ(g_app.settings.GpsSource, kSourceNone);
    EXPECT_FALSE(g_app.gps.GpsThread.joinable());
    EXPECT_EQ(platform.Ui().Titles(), (std::vector<std::string>{"Simulated GPS data", "Aerix"}));
}

}  // namespace
}  // namespace aerix
