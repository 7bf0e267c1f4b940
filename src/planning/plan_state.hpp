// The loaded plan as the plan commands work on it.
#pragma once

#include <cstdint>

namespace aerix {

struct PlanState {
    std::uint32_t PlanSectorCount = 0;  // sectors of the loaded plan (kept by plan management)
    // The sector the PLAN view highlights (0 = first): the one the sector commands act on.
    std::uint32_t HighlightedSector = 0;
};

}  // namespace aerix
