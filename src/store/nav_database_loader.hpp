// Loads the waypoints of the active navigation database (settings.NavDatabaseName) that lie in
// the area bounds into nav.NavDatabase, for the displays and the waypoint search in flight.
#pragma once

#include "settings/settings_state.hpp"
#include "store/nav_data_state.hpp"

namespace aerix {

// On an open failure says so twice ("Could not open Nav database", then "Could not open nav
// database. Error:") and leaves the previous array, its count and the mounted volume as they are.
void LoadNavDatabase(const SettingsState& settings, NavDataState& nav);

}  // namespace aerix
