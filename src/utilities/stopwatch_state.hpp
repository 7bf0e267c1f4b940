// The stopwatch's counters: they outlive the "Timer" dialog.
#pragma once

#include <cstdint>

namespace aerix {

struct StopwatchState {
    std::int32_t StopwatchSeconds = 0;
    std::int32_t StopwatchMinutes = 0;
    std::int32_t StopwatchHours = 0;
    // The identifier of the running dialog's timer, 0 when stopped.
    std::uint32_t StopwatchTimer = 0;
};

}  // namespace aerix
