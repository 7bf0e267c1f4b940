// Connects the simulator to the active plan's sectors in the record store.
#pragma once

namespace aerix {

void InstallPlanLegSource();

}  // namespace aerix
