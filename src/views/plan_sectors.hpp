// The active plan's sectors in order, read quietly: no plan simply means no route.
#pragma once

#include <vector>

#include "store/records.hpp"

namespace aerix {

std::vector<SectorRecord> ReadPlanSectors();

}  // namespace aerix
