// The "Timer" dialog model: a stopwatch in hours, minutes and seconds. The counters live in the
// StopwatchState it is given, so they outlast the dialog. The ticks follow the monotonic clock: the
// front end calls Update() when its timer fires and arms it again for MsToNextTick(), so a late or
// coarse timer never loses a tick.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "utilities/stopwatch_state.hpp"

namespace aerix {

class StopwatchDialog {
  public:
    static constexpr std::string_view kCaption = "Timer";
    static constexpr std::uint32_t kTimerId = 2;
    // Deliberately short of a second: the stopwatch has always run about 2.6 percent fast and
    // pilots' habits are set by it.
    static constexpr int kTimerPeriodMs = 975;

    explicit StopwatchDialog(StopwatchState& state) : state_(state) {}

    // Shows "00:00:00"; the counters keep whatever they hold.
    void Open();
    // Restarts from zero (there is no resume) and starts the timer at the clock's present time.
    void Start();
    // Counts every whole period since Start that is not counted yet; nothing while stopped.
    void Update();
    // How long until the next period ends (the timer's next interval); 0 while stopped.
    std::int64_t MsToNextTick() const;
    // One timer tick: a second more, carried into minutes and hours; hours never wrap.
    void Tick();
    // Stops the timer; the display keeps the last time.
    void Stop();
    // The X button: stops the timer and ends the dialog with 2.
    int Cancel();

    bool Running() const;
    const std::string& Display() const { return display_; }

  private:
    void Show();
    StopwatchState& state_;
    std::string display_ = "00:00:00";
    std::int64_t startMs_ = 0;
    std::int64_t ticks_ = 0;  // periods counted since Start
};

}  // namespace aerix
