// System-wide hot keys. On the desktop the front end owns the keyboard, so registration only
// records which identifiers are live; the main window asks before acting on a hardware button.
#pragma once

#include <map>
#include <mutex>
#include <vector>

namespace aerix::platform {

constexpr unsigned kModWin = 0x0008;
constexpr unsigned kModKeyUp = 0x1000;

struct HotKeyBinding {
    unsigned modifiers = 0;
    unsigned virtualKey = 0;
};

class HotKeys {
  public:
    virtual ~HotKeys() = default;
    // Both return false when the identifier is already registered / not registered.
    virtual bool Register(int id, unsigned modifiers, unsigned virtualKey) = 0;
    virtual bool Unregister(int id) = 0;
    virtual bool IsRegistered(int id) const = 0;
};

class HotKeyTable : public HotKeys {
  public:
    bool Register(int id, unsigned modifiers, unsigned virtualKey) override;
    bool Unregister(int id) override;
    bool IsRegistered(int id) const override;
    std::map<int, HotKeyBinding> Registered() const;
    // Every call in order: +id for a registration, -id for an unregistration.
    std::vector<int> Calls() const;

  private:
    mutable std::mutex mutex_;
    std::map<int, HotKeyBinding> keys_;
    std::vector<int> calls_;
};

}  // namespace aerix::platform
