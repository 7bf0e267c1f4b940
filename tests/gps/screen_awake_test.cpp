// The desktop is asked to keep the screen awake while a feed runs, and let go when it stops.
#include <gtest/gtest.h>

#include "app/app_state.hpp"
#include "feed_test_support.hpp"
#include "gps/feeds.hpp"
#include "gps/gps_port.hpp"
#include "platform/screen_awake.hpp"
#include "support/test_platform.hpp"

namespace aerix {
namespace {

struct FakeScreenAwake : platform::ScreenAwake {
    int inhibits = 0, releases = 0;
    void Inhibit() override { ++inhibits; }
    void Release() override { ++releases; }
};

TEST(ScreenAwake, HeldWhileAFeedRunsAndReleasedWhenItStops) {
    testing::TestPlatform p;
    FakeScreenAwake awake;
    platform::Sys().screenAwake = &awake;
    g_app.settings.ViewMode = kViewMap;

    ASSERT_TRUE(StartSimulation(testing::Feeds()));
    EXPECT_TRUE(awake.Held());
    // Playback of a missing file stops itself; the simulation still holds the screen.
    std::atomic<bool> playbackStopped{false};
    ASSERT_TRUE(StartPlayback(testing::Feeds([&](FeedCommand) {
                                  StopPlayback(g_app.gps, g_app.settings);
                                  playbackStopped = true;
                              }),
                              false));
    ASSERT_TRUE(testing::WaitUntil([&] { return playbackStopped.load(); }));
    EXPECT_TRUE(awake.Held());
    StopSimulation(g_app.gps, g_app.settings);
    EXPECT_FALSE(awake.Held());
    EXPECT_EQ(awake.inhibits, 1);
    EXPECT_EQ(awake.releases, 1);

    // A receiver that cannot be opened lets go at once.
    SetConfiguredPortName(g_app.gps, g_app.settings, u"/nonexistent/tty");
    EXPECT_FALSE(ConnectGps(testing::Feeds()));
    EXPECT_FALSE(awake.Held());
    EXPECT_EQ(awake.inhibits, 2);
    EXPECT_EQ(awake.releases, 2);

    // Without a desktop service the feeds run as before.
    platform::Sys().screenAwake = nullptr;
    ASSERT_TRUE(StartSimulation(testing::Feeds()));
    StopSimulation(g_app.gps, g_app.settings);
    EXPECT_EQ(g_app.settings.GpsSource, kSourceNone);
}

}  // namespace
}  // namespace aerix
