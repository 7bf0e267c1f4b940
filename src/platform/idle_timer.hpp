// The system idle timer: every fix resets it so that the machine does not blank the screen or
// suspend while a receiver is delivering. Counts the resets so that tests and tools can see them.
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
