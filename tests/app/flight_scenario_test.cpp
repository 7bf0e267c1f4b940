// The simulator flying a plan while the views sequence it, as in the window: a direct-to in the
// middle, the readouts the pilot reads, and the plan taken up again where the direct-to ends.
#include <gtest/gtest.h>

#include <string>

#include "app/app_state.hpp"
#include "app/plan_legs.hpp"
#include "gps/fix_publication.hpp"
#include "gps/nav_math.hpp"
#include "gps/simulator.hpp"
#include "planning/sector_dialog.hpp"
#include "platform/recording_canvas.hpp"
#include "store/record_store.hpp"
#include "support/test_platform.hpp"
#include "views/data_bar.hpp"
#include "views/instrument_frame.hpp"

namespace aerix {
namespace {

constexpr std::int32_t kDeg = 6000;

struct Point {
    const char16_t* ident;
    std::int32_t lat, lon;
};

// Alpha -> Bravo -> Charlie -> Delta, a zigzag over the Channel.
const Point kRoute[] = {{u"ALPHA", 50 * kDeg, 0},
                        {u"BRAVO", 50 * kDeg, kDeg / 2},
                        {u"CHRLY", 50 * kDeg + kDeg / 3, kDeg},
                        {u"DELTA", 50 * kDeg, 3 * kDeg / 2}};

class FlightScenarioTest : public ::testing::Test {
  protected:
    void SetUp() override {
        p.Clock().SetUtc({2026, 6, 1, 12, 0, 0});
        g_app.settings.ActivePlanName.assign(u"Trip");
        ASSERT_NE(CreatePlanDatabase(u"Trip"), 0u);
        DbHandle h = OpenDatabase(u"Trip", schema::kSecNumber);
        for (int i = 0; i < 3; ++i) {
            const Point& a = kRoute[i];
            const Point& b = kRoute[i + 1];
            SectorRecord s;
            s.SectorNumber = static_cast<std::int16_t>(i + 1);
            s.Text402 = s.Text404 = b.ident;
            s.StartLatitude = a.lat;
            s.StartLongitude = a.lon;
            s.EndLatitude = b.lat;
            s.EndLongitude = b.lon;
            CourseDistance(a.lat, a.lon, b.lat, b.lon, s.TrueCourse, s.Distance, 0);
            s.GroundSpeed = 240;
            WriteSector(h, s);
        }
    }

    // What the window does on each fix: take the fix and prepare the instruments' frame.
    InstrumentFrameInput Paint() {
        TakeFixSnapshot(g_app.gps);
        return PrepareInstrumentFrame({g_app.view, g_app.settings, g_app.gps, g_app.leg},
                                      g_app.nav);
    }

    testing::TestPlatform p;
};

TEST_F(FlightScenarioTest, DirectToInTheMiddleThenThePlanFromWhereItEnds) {
    std::stop_source stop;
    int step = 0;
    int directSteps = 0;
    bool directEnded = false;
    std::string barDuringDirect, dtkDuringDirect;
    std::size_t routeDuringDirect = 0;
    double trackAfter = -1;
    SimulatorThread(stop.get_token(), g_app.gps, g_app.leg, PlanLegSource(), [&](int) {
        InstrumentFrameInput in = Paint();
        ++step;
        if (step == 20) {
            // On the first leg, direct to Charlie.
            ASSERT_EQ(g_app.leg.ActiveSectorIndex.load(), 0u);
            ASSERT_TRUE(DirectTo(g_app.leg, g_app.gps.Fix,
                                 {u"Charlie", u"CHRLY", kRoute[2].lat, kRoute[2].lon}));
            return;
        }
        if (g_app.leg.DirectToStartLatitude.load() != 0) {
            ASSERT_TRUE(in.leg.direct);
            if (++directSteps == 5) {
                barDuringDirect = DataBarText(in.leg.bar);
                dtkDuringDirect = DirectionText(in.leg.course, in.leg.reference, true);
                routeDuringDirect = in.route.size();
            }
            return;
        }
        if (directSteps > 0 && !directEnded) {
            directEnded = true;
            // Reaching Charlie ended the direct-to: on with Charlie -> Delta.
            EXPECT_EQ(g_app.leg.ActiveSectorIndex.load(), 2u);
            EXPECT_EQ(in.leg.bar.name, u"DELTA");
            return;
        }
        if (directEnded) {
            trackAfter = g_app.gps.Fix.trueTrack;
            stop.request_stop();
        }
        if (step > 2000)
            stop.request_stop();
    });
    ASSERT_GT(directSteps, 5);
    ASSERT_TRUE(directEnded);
    // Every readout was to Charlie, on the direct course, in the magnetic reference.
    EXPECT_EQ(barDuringDirect.substr(0, 12), "CHRLY  BRG 0") << barDuringDirect;
    EXPECT_NE(barDuringDirect.find("\xC2\xB0M"), std::string::npos) << barDuringDirect;
    EXPECT_EQ(dtkDuringDirect.substr(3), "\xC2\xB0M");
    EXPECT_EQ(routeDuringDirect, 4u);  // the plan's three legs and the direct one
    // And the simulator flew on along Charlie -> Delta.
    SectorRecord third;
    ASSERT_TRUE(ReadActivePlanSector(g_app.settings, 2, third));
    EXPECT_DOUBLE_EQ(trackAfter, third.TrueCourse);
}

TEST_F(FlightScenarioTest, ResumePlanAndDirectToNeedAPosition) {
    SectorEnd charlie{u"Charlie", u"CHRLY", kRoute[2].lat, kRoute[2].lon};
    // No fix yet: refused in words, nothing changes.
    EXPECT_FALSE(DirectTo(g_app.leg, g_app.gps.Fix, charlie));
    EXPECT_EQ(g_app.leg.DirectToStartLatitude.load(), 0);
    EXPECT_EQ(p.Ui().Boxes().size(), 1u);

    GpsFix fix;
    fix.latitude = 50 * kDeg;
    fix.longitude = kDeg / 10;
    fix.trueTrack = 90;
    fix.positionKnown = true;
    g_app.gps.PublishedFix.Publish(fix);
    EXPECT_EQ(Paint().leg.bar.name, u"BRAVO");
    ASSERT_TRUE(DirectTo(g_app.leg, g_app.gps.Fix, charlie));
    InstrumentFrameInput in = Paint();
    EXPECT_EQ(in.leg.bar.name, u"CHRLY");
    EXPECT_EQ(in.leg.endLatitude, kRoute[2].lat);
    ResumePlan(g_app.leg);
    in = Paint();
    EXPECT_FALSE(in.leg.direct);
    EXPECT_EQ(in.leg.bar.name, u"BRAVO");
    EXPECT_EQ(in.route.size(), 3u);
}

}  // namespace
}  // namespace aerix
