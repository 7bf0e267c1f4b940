#include "utilities/stopwatch.hpp"

#include <algorithm>
#include <cstdio>

#include "platform/services.hpp"

namespace aerix {

void StopwatchDialog::Open() {
    display_ = "00:00:00";
}

void StopwatchDialog::Start() {
    display_ = "00:00:00";
    state_.StopwatchSeconds = 0;
    state_.StopwatchMinutes = 0;
    state_.StopwatchHours = 0;
    state_.StopwatchTimer = kTimerId;
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
    if (++state_.StopwatchSeconds == 60) {
        state_.StopwatchSeconds = 0;
        if (++state_.StopwatchMinutes == 60) {
            state_.StopwatchMinutes = 0;
            ++state_.StopwatchHours;
        }
    }
    Show();
}

void StopwatchDialog::Stop() {
    state_.StopwatchTimer = 0;
}

int StopwatchDialog::Cancel() {
    state_.StopwatchTimer = 0;
    return 2;
}

bool StopwatchDialog::Running() const {
    return state_.StopwatchTimer != 0;
}

void StopwatchDialog::Show() {
    char buf[40];
    std::snprintf(buf, sizeof buf, "%02d:%02d:%02d", state_.StopwatchHours, state_.StopwatchMinutes,
                  state_.StopwatchSeconds);
    display_ = buf;
}

}  // namespace aerix
