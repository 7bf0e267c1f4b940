#include "utilities/stopwatch.hpp"

#include <cstdio>

#include "app/state/app_state.hpp"

namespace aerix {

void StopwatchDialog::Open() {
    display_ = "00:00:00";
}

void StopwatchDialog::Start() {
    display_ = "00:00:00";
    g_app.StopwatchSeconds = 0;
    g_app.StopwatchMinutes = 0;
    g_app.StopwatchHours = 0;
    g_app.StopwatchTimer = kTimerId;
}

void StopwatchDialog::Tick() {
    if (++g_app.StopwatchSeconds == 60) {
        g_app.StopwatchSeconds = 0;
        if (++g_app.StopwatchMinutes == 60) {
            g_app.StopwatchMinutes = 0;
            ++g_app.StopwatchHours;
        }
    }
    Show();
}

void StopwatchDialog::Stop() {
    g_app.StopwatchTimer = 0;
}

int StopwatchDialog::Cancel() {
    g_app.StopwatchTimer = 0;
    return 2;
}

bool StopwatchDialog::Running() const {
    return g_app.StopwatchTimer != 0;
}

void StopwatchDialog::Show() {
    char buf[40];
    std::snprintf(buf, sizeof buf, "%02d:%02d:%02d", g_app.StopwatchHours, g_app.StopwatchMinutes,
                  g_app.StopwatchSeconds);
    display_ = buf;
}

}  // namespace aerix
