// The active plan's sectors in order, read quietly: no plan simply means no route.
#pragma once

#include <vector>

#include "settings/settings_state.hpp"
#include "store/records.hpp"

namespace aerix {

std::vector<SectorRecord> ReadPlanSectors(const SettingsState& settings);

}  // namespace aerix
