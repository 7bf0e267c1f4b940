#include "platform/screen_awake.hpp"

#include "platform/services.hpp"

namespace aerix::platform {

void ScreenAwake::Hold(AwakeHolder holder, bool hold) {
    std::lock_guard lock(mutex_);
    const std::uint8_t before = holders_;
    const auto bit = static_cast<std::uint8_t>(holder);
    holders_ = static_cast<std::uint8_t>(hold ? (holders_ | bit) : (holders_ & ~bit));
    if (before == 0 && holders_ != 0)
        Inhibit();
    else if (before != 0 && holders_ == 0)
        Release();
}

bool ScreenAwake::Held() const {
    std::lock_guard lock(mutex_);
    return holders_ != 0;
}

void HoldScreenAwake(AwakeHolder holder, bool hold) {
    if (ScreenAwake* awake = Sys().screenAwake)
        awake->Hold(holder, hold);
}

}  // namespace aerix::platform
