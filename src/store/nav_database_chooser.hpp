// Choosing the active navigation database, and deleting one that is not active, through the
// file dialog over the "*.CDB" volume files.
#pragma once

#include "settings/settings_state.hpp"
#include "store/nav_data_state.hpp"

namespace aerix {

// 0 when a database was chosen (settings.NavDatabaseName, the arrays marked for reloading), -1
// when the user cancelled.
int ChooseNavDatabase(SettingsState& settings, NavDataState& nav);
// Any database but the active one.
void DeleteNavDatabase(const SettingsState& settings);

}  // namespace aerix
