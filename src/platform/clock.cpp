#include "platform/clock.hpp"

#include <thread>

namespace aerix::platform {

namespace {
constexpr std::int64_t kMsPerDay = 86'400'000;
}

std::int64_t UnixMsFromUtc(const UtcTime& t) {
    using namespace std::chrono;
    auto days = sys_days{year{t.year} / month{static_cast<unsigned>(t.month)} /
                         day{static_cast<unsigned>(t.day)}};
    return days.time_since_epoch().count() * kMsPerDay +
           ((t.hour * 60LL + t.minute) * 60LL + t.second) * 1000LL + t.millisecond;
}

UtcTime UtcFromUnixMs(std::int64_t ms) {
    using namespace std::chrono;
    std::int64_t dayCount = ms >= 0 ? ms / kMsPerDay : (ms - kMsPerDay + 1) / kMsPerDay;
    std::int64_t rest = ms - dayCount * kMsPerDay;
    year_month_day ymd{sys_days{days{dayCount}}};
    UtcTime t;
    t.year = static_cast<int>(ymd.year());
    t.month = static_cast<int>(static_cast<unsigned>(ymd.month()));
    t.day = static_cast<int>(static_cast<unsigned>(ymd.day()));
    t.hour = static_cast<int>(rest / 3'600'000);
    t.minute = static_cast<int>(rest / 60'000 % 60);
    t.second = static_cast<int>(rest / 1000 % 60);
    t.millisecond = static_cast<int>(rest % 1000);
    return t;
}

std::int64_t SystemClock::NowMs() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

UtcTime SystemClock::UtcNow() {
    using namespace std::chrono;
    return UtcFromUnixMs(
        duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count());
}

bool SystemClock::SleepMs(std::int64_t ms, std::stop_token stop) {
    if (!stop.stop_possible()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(ms));
        return true;
    }
    std::mutex m;
    std::condition_variable_any cv;
    std::unique_lock lock(m);
    cv.wait_for(lock, stop, std::chrono::milliseconds(ms), [] { return false; });
    return !stop.stop_requested();
}

VirtualClock::VirtualClock(UtcTime start) : utcBaseMs_(UnixMsFromUtc(start)) {}

std::int64_t VirtualClock::NowMs() {
    std::lock_guard lock(mutex_);
    return nowMs_;
}

UtcTime VirtualClock::UtcNow() {
    std::lock_guard lock(mutex_);
    return UtcFromUnixMs(utcBaseMs_ + nowMs_);
}

bool VirtualClock::SleepMs(std::int64_t ms, std::stop_token stop) {
    if (stop.stop_requested())
        return false;
    {
        std::lock_guard lock(mutex_);
        nowMs_ += ms;
        sleptMs_ += ms;
        ++sleeps_;
    }
    // Let other threads run, as a real sleep would.
    std::this_thread::yield();
    return !stop.stop_requested();
}

void VirtualClock::Advance(std::int64_t ms) {
    std::lock_guard lock(mutex_);
    nowMs_ += ms;
}

void VirtualClock::SetUtc(UtcTime time) {
    std::lock_guard lock(mutex_);
    utcBaseMs_ = UnixMsFromUtc(time) - nowMs_;
}

std::int64_t VirtualClock::SleptMs() const {
    std::lock_guard lock(mutex_);
    return sleptMs_;
}

int VirtualClock::SleepCount() const {
    std::lock_guard lock(mutex_);
    return sleeps_;
}

}  // namespace aerix::platform
