// The "Timer" dialog model: a stopwatch in hours, minutes and seconds. The counters live in
// g_app, so they outlast the dialog; the front end drives Tick() from a timer of
// kTimerPeriodMs while Running().
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace aerix {

class StopwatchDialog {
  public:
    static constexpr std::string_view kCaption = "Timer";
    static constexpr std::uint32_t kTimerId = 2;
    // Deliberately short of a second: the stopwatch has always run about 2.6 percent fast and
    // pilots' habits are set by it.
    static constexpr int kTimerPeriodMs = 975;

    // Shows "00:00:00"; the counters keep whatever they hold.
    void Open();
    // Restarts from zero (there is no resume) and starts the timer.
    void Start();
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
    std::string display_ = "00:00:00";
};

}  // namespace aerix
