#include "utilities/stopwatch.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

#include "app/app_state.hpp"
#include "support/test_platform.hpp"

namespace aerix {
namespace {

class StopwatchTest : public ::testing::Test {
  protected:
    void Ticks(int n) {
        for (int i = 0; i < n; ++i)
            dialog_.Tick();
    }
    testing::TestPlatform platform_;
    StopwatchDialog dialog_{g_app.stopwatch};
};

TEST_F(StopwatchTest, CountsAndWidensTheHours) {
    dialog_.Open();
    dialog_.Start();
    EXPECT_TRUE(dialog_.Running());
    EXPECT_EQ(StopwatchDialog::kTimerPeriodMs, 975);
    Ticks(59);
    EXPECT_EQ(dialog_.Display(), "00:00:59");
    Ticks(1);
    EXPECT_EQ(dialog_.Display(), "00:01:00");
    Ticks(3600 - 60);
    EXPECT_EQ(dialog_.Display(), "01:00:00");
    Ticks(360000 - 3600);
    EXPECT_EQ(dialog_.Display(), "100:00:00");
    EXPECT_EQ(g_app.stopwatch.StopwatchHours, 100);
}

TEST_F(StopwatchTest, CountersOutliveTheDialogAndStartRestartsFromZero) {
    dialog_.Open();
    dialog_.Start();
    Ticks(75);
    EXPECT_EQ(dialog_.Cancel(), 2);
    EXPECT_FALSE(dialog_.Running());
    EXPECT_EQ(g_app.stopwatch.StopwatchMinutes, 1);
    EXPECT_EQ(g_app.stopwatch.StopwatchSeconds, 15);

    StopwatchDialog reopened{g_app.stopwatch};
    reopened.Open();
    EXPECT_EQ(reopened.Display(), "00:00:00");
    EXPECT_EQ(g_app.stopwatch.StopwatchSeconds, 15);  // untouched until Start
    reopened.Start();
    reopened.Tick();
    EXPECT_EQ(reopened.Display(), "00:00:01");

    reopened.Stop();
    EXPECT_FALSE(reopened.Running());
    EXPECT_EQ(reopened.Display(), "00:00:01");
}

// The timer that drives the dialog may fire late (a coarse timer, a busy window); the display
// must follow the time elapsed on the clock, one count per 975 ms.
TEST_F(StopwatchTest, DisplayFollowsElapsedTimeWhateverTheTimerDoes) {
    auto& clock = platform_.Clock();
    struct Case {
        const char* timer;
        std::int64_t lateMs;   // how late each firing comes after the interval asked for
        std::int64_t everyMs;  // > 0: fires at this fixed period instead
    };
    const Case cases[] = {
        {"on time", 0, 0}, {"late", 37, 0}, {"coarse 1 s", 0, 1000}, {"stalled 10 s", 0, 10000}};
    for (const auto& c : cases) {
        dialog_.Open();
        dialog_.Start();
        EXPECT_EQ(dialog_.MsToNextTick(), 975) << c.timer;
        std::int64_t started = clock.NowMs();
        while (clock.NowMs() - started < 60000) {
            std::int64_t wait = c.everyMs > 0 ? c.everyMs : dialog_.MsToNextTick() + c.lateMs;
            clock.Advance(std::min(wait, 60000 - (clock.NowMs() - started)));
            dialog_.Update();
        }
        // 60000 / 975 = 61.5: a real minute reads 1:01, the stopwatch's own 2.6 percent.
        EXPECT_EQ(dialog_.Display(), "00:01:01") << c.timer;
        EXPECT_EQ(dialog_.MsToNextTick(), 62 * 975 - 60000) << c.timer;
        dialog_.Stop();
        clock.Advance(5000);
        dialog_.Update();  // stopped: the display keeps the last time
        EXPECT_EQ(dialog_.Display(), "00:01:01") << c.timer;
    }
}

TEST_F(StopwatchTest, StopWithoutStartChangesNothing) {
    g_app.stopwatch.StopwatchSeconds = 7;
    dialog_.Open();
    dialog_.Stop();
    EXPECT_EQ(dialog_.Display(), "00:00:00");
    EXPECT_EQ(g_app.stopwatch.StopwatchSeconds, 7);
}

}  // namespace
}  // namespace aerix
