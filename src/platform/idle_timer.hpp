// The system idle timer that every fix resets. A desktop has no such timer to reset: there the
// feeds hold the screen awake for as long as they run (ScreenAwake). Counts the resets so that
// tests and tools can see that fixes arrive.
#pragma once

#include <atomic>
#include <cstdint>

namespace aerix::platform {

class IdleTimer {
  public:
    virtual ~IdleTimer() = default;
    virtual void Reset() { resets_.fetch_add(1, std::memory_order_relaxed); }
    std::int64_t ResetCount() const { return resets_.load(std::memory_order_relaxed); }

  private:
    std::atomic<std::int64_t> resets_{0};
};

}  // namespace aerix::platform
