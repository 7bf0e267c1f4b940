#include "app/view_hot_keys.hpp"

#include "platform/services.hpp"

namespace aerix {

// 193 to 195 in a loop, then 196 alone, as the buttons were always handled.
void RegisterViewHotKeys() {
    auto& keys = *platform::Sys().hotKeys;
    for (int id = kFirstViewHotKey; id < kLastViewHotKey; ++id) {
        keys.Register(id, kViewHotKeyModifiers, static_cast<unsigned>(id));
    }
    keys.Register(kLastViewHotKey, kViewHotKeyModifiers, kLastViewHotKey);
}

void UnregisterViewHotKeys() {
    auto& keys = *platform::Sys().hotKeys;
    for (int id = kFirstViewHotKey; id < kLastViewHotKey; ++id)
        keys.Unregister(id);
    keys.Unregister(kLastViewHotKey);
}

}  // namespace aerix
