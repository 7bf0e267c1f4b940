// Hands the fix from a feed thread to the painting thread as one consistent snapshot. A feed
// works on its own copy (parser, time-outs, simulator) and publishes the whole of it; a reader
// never sees a new latitude with an old longitude.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>

#include "gps/gps_fix.hpp"

namespace aerix {

class FixPublisher {
  public:
    void Publish(const GpsFix& fix) {
        {
            std::lock_guard lock(mutex_);
            fix_ = fix;
            ++sequence_;
        }
        changed_.notify_all();
    }

    GpsFix Snapshot() const {
        std::lock_guard lock(mutex_);
        return fix_;
    }

    // How many fixes have been published; tells a reader whether anything is new.
    std::uint64_t Sequence() const {
        std::lock_guard lock(mutex_);
        return sequence_;
    }

    // Waits up to timeoutMs for a publication after `seen`; returns the sequence then reached.
    std::uint64_t WaitNewer(std::uint64_t seen, int timeoutMs) const {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                          [&] { return sequence_ != seen; });
        return sequence_;
    }

    // The instrument view acknowledges a void fix after showing its banner once.
    void ClearVoid() {
        std::lock_guard lock(mutex_);
        fix_.FixVoid = 0;
    }

  private:
    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    GpsFix fix_;
    std::uint64_t sequence_ = 0;
};

}  // namespace aerix
