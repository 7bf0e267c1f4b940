#include <gtest/gtest.h>

#include <future>

#include "app/app_state.hpp"
#include "gps/feeds.hpp"
#include "support/test_platform.hpp"

namespace aerix {
namespace {

const std::string kRmc = "$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W*6A\r\n";

class PlaybackTest : public ::testing::Test {
  protected:
    PlaybackTest() { g_app.settings.ViewMode = kViewInstruments; }
    FeedWiring Feeds() {
        return FeedWiring{g_app.gps,
                          g_app.leg,
                          g_app.settings,
                          [this](FeedCommand c) {
                              // as the main window does with the command
                              StopPlayback(g_app.gps, g_app.settings);
                              stopped.set_value(c);
                          },
                          {}};
    }
    FeedCommand WaitForStop() {
        auto f = stopped.get_future();
        EXPECT_EQ(f.wait_for(std::chrono::seconds(10)), std::future_status::ready);
        return f.get();
    }
    void Record(const std::string& bytes) {
        testing::WriteFile(platform.Data().ResolveForWrite("\\My Documents\\GpsData.txt"), bytes);
    }

    testing::TestPlatform platform;
    std::promise<FeedCommand> stopped;
};

TEST_F(PlaybackTest, PacesEveryLineAndParsesOnlyRmc) {
    struct Case {
        bool fast;
        std::int64_t pauseMs;
    } cases[] = {{false, 1000}, {true, 100}};
    for (const auto& c : cases) {
        std::string file;
        for (int i = 0; i < 60; ++i)
            file += kRmc;
        file += "$GPGGA,1,2,3\r\n";  // other lines slow playback down, and are not parsed
        Record(file + "$GPRMC,partial");
        int invalidations = platform.Ui().InvalidateCount();
        std::int64_t slept = platform.Clock().SleptMs();
        stopped = {};
        ASSERT_TRUE(StartPlayback(Feeds(), c.fast));
        EXPECT_EQ(WaitForStop(), FeedCommand::StopPlayback);
        EXPECT_EQ(platform.Clock().SleptMs() - slept, 61 * c.pauseMs);
        EXPECT_EQ(platform.Ui().InvalidateCount() - invalidations, 60);
        EXPECT_EQ(g_app.settings.GpsSource, kSourceNone);
        EXPECT_EQ(g_app.gps.PlaybackFast.load(), 0);
        EXPECT_DOUBLE_EQ(g_app.gps.PublishedFix.Snapshot().latitude, 288703.8);
    }
    auto titles = platform.Ui().Titles();
    EXPECT_EQ(titles.front(), "Recorded GPS data");
    EXPECT_EQ(titles.back(), "Aerix");
}

TEST_F(PlaybackTest, MissingFileStopsAtOnce) {
    ASSERT_TRUE(StartPlayback(Feeds(), false));
    EXPECT_EQ(WaitForStop(), FeedCommand::StopPlayback);
    EXPECT_EQ(platform.Clock().SleepCount(), 0);
    EXPECT_EQ(g_app.settings.GpsSource, kSourceNone);
}

TEST_F(PlaybackTest, FastFlagSurvivesANormalStartUntilStopped) {
    Record(kRmc);
    ASSERT_TRUE(StartPlayback(Feeds(), true));
    WaitForStop();
    g_app.gps.PlaybackFast.store(1);  // a fast playback that was never stopped
    stopped = {};
    std::int64_t slept = platform.Clock().SleptMs();
    ASSERT_TRUE(StartPlayback(Feeds(), false));
    WaitForStop();
    EXPECT_EQ(platform.Clock().SleptMs() - slept, 100);
}

TEST_F(PlaybackTest, FeedsRefuseOutsideTheMapAndInstrumentViews) {
    g_app.settings.ViewMode = kViewPlan;
    EXPECT_FALSE(StartPlayback(Feeds(), false));
    EXPECT_FALSE(StartSimulation(Feeds()));
    EXPECT_FALSE(ConnectGps(Feeds()));
    auto boxes = platform.Ui().Boxes();
    ASSERT_EQ(boxes.size(), 3u);
    EXPECT_EQ(boxes[0].text, "Select Map, HSI or AERIX view before GPS data playback");
    EXPECT_EQ(boxes[1].text, "Select Map, HSI or AERIX view before starting simulation");
    EXPECT_EQ(boxes[2].text, "Select Map, HSI or AERIX view before connecting GPS");
    EXPECT_EQ(boxes[2].caption, "Warning");
    EXPECT_EQ(g_app.settings.GpsSource, kSourceNone);
    EXPECT_TRUE(platform.Ui().Titles().empty());
}

}  // namespace
}  // namespace aerix
