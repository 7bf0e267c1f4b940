// The persisted settings: written with their defaults on the first run, loaded at start and saved
// at exit, all under HKEY_LOCAL_MACHINE "Software\Qorvane Software\Aerix".
#pragma once

#include "settings/settings_key.hpp"

namespace aerix {

// First-run writer: writes the defaults only when the key is created now.
void CreateDefaultSettings();
// Fills g_app from the registry.
void LoadSettings();
// Writes g_app to the registry.
void SaveSettings();

}  // namespace aerix
