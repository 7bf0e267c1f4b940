// The desktop is asked to keep the screen awake while a feed runs, and let go when it stops.
#include <gtest/gtest.h>

#include "app/state/app_state.hpp"
#include "feed_test_support.hpp"
#include "gps/feed_commands.hpp"
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

    ASSERT_TRUE(StartSimulation());
    EXPECT_TRUE(awake.Held());
    // Playback of a missing file stops itself; the simulation still holds the screen.
    std::atomic<bool> playbackStopped{false};
    SetFeedCommandSink([&](FeedCommand) {
        StopPlayback();
        playbackStopped = true;
    });
    ASSERT_TRUE(StartPlayback(false));
    ASSERT_TRUE(testing::WaitUntil([&] { return playbackStopped.load(); }));
    EXPECT_TRUE(awake.Held());
    StopSimulation();
    EXPECT_FALSE(awake.Held());
    EXPECT_EQ(awake.inhibits, 1);
    EXPECT_EQ(awake.releases, 1);

    // A receiver that cannot be opened lets go at once.
    SetFeedCommandSink({});
    SetConfiguredPortName(u"/nonexistent/tty");
    EXPECT_FALSE(ConnectGps());
    EXPECT_FALSE(awake.Held());
    EXPECT_EQ(awake.inhibits, 2);
    EXPECT_EQ(awake.releases, 2);

    // Without a desktop service the feeds run as before.
    platform::Sys().screenAwake = nullptr;
    ASSERT_TRUE(StartSimulation());
    StopSimulation();
    EXPECT_EQ(g_app.settings.GpsSource, kSourceNone);
}

}  // namespace
}  // namespace aerix
