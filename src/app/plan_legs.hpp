// The legs the simulator flies: the active plan's sectors in the record store.
#pragma once

#include "gps/simulator.hpp"

namespace aerix {

SimLegSource PlanLegSource();

}  // namespace aerix
