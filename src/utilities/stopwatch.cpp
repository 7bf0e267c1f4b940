#include "utilities/stopwatch.hpp"

#include <algorithm>
#include <cstdio>

#include "app/state/app_state.hpp"
#include "platform/services.hpp"

namespace aerix {

void StopwatchDialog::Open() {
    display_ = "00:00:00";
}

void StopwatchDialog::Start() {
    display_ = "00:00:00";
    g_app.stopwatch.StopwatchSeconds = 0;
    g_app.stopwatch.StopwatchMinutes = 0;
    g_app.stopwatch.StopwatchHours = 0;
    g_app.stopwatch.StopwatchTimer = kTimerId;
    startMs_ = platform::Sys().clock->NowMs();
    ticks_ = 0;
}

void StopwatchDialog::Update() {
    if (!Running())
        return;
    std::int64_t due = (platform::Sys().clock->NowMs() - startMs_) / kTimerPeriodMs;
    while (ticks_ < due) {
        ++ticks_;
        Tick();
    }
}

std::int64_t StopwatchDialog::MsToNextTick() const {
    if (!Running())
        return 0;
    std::int64_t next = startMs_ + (ticks_ + 1) * kTimerPeriodMs;
    return std::max<std::int64_t>(0, next - platform::Sys().clock->NowMs());
}

void StopwatchDialog::Tick() {
    if (++g_app.stopwatch.StopwatchSeconds == 60) {
        g_app.stopwatch.StopwatchSeconds = 0;
        if (++g_app.stopwatch.StopwatchMinutes == 60) {
            g_app.stopwatch.StopwatchMinutes = 0;
            ++g_app.stopwatch.StopwatchHours;
        }
    }
    Show();
}

void StopwatchDialog::Stop() {
    g_app.stopwatch.StopwatchTimer = 0;
}

int StopwatchDialog::Cancel() {
    g_app.stopwatch.StopwatchTimer = 0;
    return 2;
}

bool StopwatchDialog::Running() const {
    return g_app.stopwatch.StopwatchTimer != 0;
}

void StopwatchDialog::Show() {
    char buf[40];
    std::snprintf(buf, sizeof buf, "%02d:%02d:%02d", g_app.stopwatch.StopwatchHours, g_app.stopwatch.StopwatchMinutes,
                  g_app.stopwatch.StopwatchSeconds);
    display_ = buf;
}

}  // namespace aerix
