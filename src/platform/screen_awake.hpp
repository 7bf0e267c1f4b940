// Keeping the screen on while a feed delivers fixes: the desktop would otherwise blank the screen
// or suspend the machine for idleness in the middle of a flight.
#pragma once

#include <cstdint>
#include <mutex>

namespace aerix::platform {

// Who keeps the screen awake: each feed thread slot holds it while its feed runs.
enum class AwakeHolder : std::uint8_t { kGpsSlot = 1, kPlaybackSlot = 2 };

// The desktop's inhibit service, asked once when the first holder takes it and released when the
// last lets go.
class ScreenAwake {
  public:
    virtual ~ScreenAwake() = default;
    // Takes (hold) or gives back the holder's share; repeating a call changes nothing. Safe from
    // any thread.
    void Hold(AwakeHolder holder, bool hold);
    bool Held() const;

  protected:
    // Both return at once and are quiet when the desktop has no such service.
    virtual void Inhibit() = 0;
    virtual void Release() = 0;

  private:
    mutable std::mutex mutex_;
    std::uint8_t holders_ = 0;
};

// Hold on the installed ScreenAwake of Sys(); nothing when none is installed.
void HoldScreenAwake(AwakeHolder holder, bool hold);

}  // namespace aerix::platform
