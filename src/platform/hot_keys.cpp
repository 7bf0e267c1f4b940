#include "platform/hot_keys.hpp"

namespace aerix::platform {

bool HotKeyTable::Register(int id, unsigned modifiers, unsigned virtualKey) {
    std::lock_guard lock(mutex_);
    calls_.push_back(id);
    return keys_.emplace(id, HotKeyBinding{modifiers, virtualKey}).second;
}

bool HotKeyTable::Unregister(int id) {
    std::lock_guard lock(mutex_);
    calls_.push_back(-id);
    return keys_.erase(id) > 0;
}

bool HotKeyTable::IsRegistered(int id) const {
    std::lock_guard lock(mutex_);
    return keys_.count(id) > 0;
}

std::map<int, HotKeyBinding> HotKeyTable::Registered() const {
    std::lock_guard lock(mutex_);
    return keys_;
}

std::vector<int> HotKeyTable::Calls() const {
    std::lock_guard lock(mutex_);
    return calls_;
}

}  // namespace aerix::platform
