// The persisted settings: written with their defaults on the first run, loaded at start and saved
// at exit, all under HKEY_LOCAL_MACHINE "Software\Qorvane Software\Aerix".
#pragma once

#include <string_view>

#include "settings/settings_state.hpp"

namespace aerix {

inline constexpr std::u16string_view kSettingsKey = u"Software\\Qorvane Software\\Aerix";

// First-run writer: writes the defaults (and sets them in settings) only when the key is
// created now.
void CreateDefaultSettings(SettingsState& settings);
// Fills settings from the registry.
void LoadSettings(SettingsState& settings);
// Writes settings to the registry.
void SaveSettings(const SettingsState& settings);

}  // namespace aerix
