// Time for the program: a monotonic clock, the UTC calendar time and sleeping. Injectable so
// that tests run the feeds and timers in virtual time and never wait real seconds.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <stop_token>

namespace aerix::platform {

struct UtcTime {
    int year = 1970;
    int month = 1;  // 1..12
    int day = 1;    // 1..31
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;
};

class Clock {
  public:
    virtual ~Clock() = default;
    // Milliseconds on a monotonic clock.
    virtual std::int64_t NowMs() = 0;
    virtual UtcTime UtcNow() = 0;
    // Sleeps for ms milliseconds or until a stop is requested; returns false when stopped.
    virtual bool SleepMs(std::int64_t ms, std::stop_token stop = {}) = 0;
};

class SystemClock : public Clock {
  public:
    std::int64_t NowMs() override;
    UtcTime UtcNow() override;
    bool SleepMs(std::int64_t ms, std::stop_token stop = {}) override;
};

// Time moves only when somebody sleeps (or Advance is called): a sleep returns at once, having
// moved the clock on by its length.
class VirtualClock : public Clock {
  public:
    explicit VirtualClock(UtcTime start = {2025, 6, 1, 12, 0, 0, 0});
    std::int64_t NowMs() override;
    UtcTime UtcNow() override;
    bool SleepMs(std::int64_t ms, std::stop_token stop = {}) override;
    void Advance(std::int64_t ms);
    void SetUtc(UtcTime time);
    // Total milliseconds slept through this clock, and how many sleeps.
    std::int64_t SleptMs() const;
    int SleepCount() const;

  private:
    mutable std::mutex mutex_;
    std::int64_t nowMs_ = 0;
    std::int64_t utcBaseMs_ = 0;  // Unix ms at nowMs_ == 0
    std::int64_t sleptMs_ = 0;
    int sleeps_ = 0;
};

// Unix milliseconds <-> calendar (proleptic Gregorian, UTC).
std::int64_t UnixMsFromUtc(const UtcTime& t);
UtcTime UtcFromUnixMs(std::int64_t ms);

}  // namespace aerix::platform
