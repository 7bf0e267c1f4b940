// The four hardware application buttons (193-196) as hot keys of the main window.
#pragma once

namespace aerix {

inline constexpr int kFirstViewHotKey = 193;
inline constexpr int kLastViewHotKey = 196;
inline constexpr unsigned kViewHotKeyModifiers = 0x1008;  // MOD_WIN | MOD_KEYUP

void RegisterViewHotKeys();
void UnregisterViewHotKeys();

}  // namespace aerix
