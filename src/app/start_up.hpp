// What every start does before its first screen or command, the window's and the tool's alike,
// so that both see the same settings and data.
#pragma once

#include "app/app_state.hpp"
#include "app/default_data.hpp"

namespace aerix {

// The settings: the port name preset, the defaults written on the first run, the registry loaded
// over them.
void LoadStartSettings(AppState& app);

// The settings, then the data: the GPS device chosen, the default data
// set made whole (the "World" database built on the first run; its problem, if any, comes back)
// and the loaded plan's sector count.
DefaultNavBuild StartUp(AppState& app);

}  // namespace aerix
