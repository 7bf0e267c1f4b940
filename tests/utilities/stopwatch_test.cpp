#include "utilities/stopwatch.hpp"

#include <gtest/gtest.h>

#include "app/state/app_state.hpp"
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
    StopwatchDialog dialog_;
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
    EXPECT_EQ(g_app.StopwatchHours, 100);
}

TEST_F(StopwatchTest, CountersOutliveTheDialogAndStartRestartsFromZero) {
    dialog_.Open();
    dialog_.Start();
    Ticks(75);
    EXPECT_EQ(dialog_.Cancel(), 2);
    EXPECT_FALSE(dialog_.Running());
    EXPECT_EQ(g_app.StopwatchMinutes, 1);
    EXPECT_EQ(g_app.StopwatchSeconds, 15);

    StopwatchDialog reopened;
    reopened.Open();
    EXPECT_EQ(reopened.Display(), "00:00:00");
    EXPECT_EQ(g_app.StopwatchSeconds, 15);  // untouched until Start
    reopened.Start();
    reopened.Tick();
    EXPECT_EQ(reopened.Display(), "00:00:01");

    reopened.Stop();
    EXPECT_FALSE(reopened.Running());
    EXPECT_EQ(reopened.Display(), "00:00:01");
}

TEST_F(StopwatchTest, StopWithoutStartChangesNothing) {
    g_app.StopwatchSeconds = 7;
    dialog_.Open();
    dialog_.Stop();
    EXPECT_EQ(dialog_.Display(), "00:00:00");
    EXPECT_EQ(g_app.StopwatchSeconds, 7);
}

}  // namespace
}  // namespace aerix
