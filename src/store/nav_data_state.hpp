// The navigation data in memory: the waypoints and airspace of the area kept, the mounted
// navigation volume and how the waypoint search matches.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/prop_val.hpp"
#include "store/nav_types.hpp"

namespace aerix {

struct NavDataState {
    // The area the arrays are kept for (inclusive bounds in CentiMinutes; the whole world unless
    // narrowed).
    std::int32_t AreaNorth = kWholeWorldNorth;
    std::int32_t AreaSouth = -kWholeWorldNorth;
    std::int32_t AreaEast = kWholeWorldEast;
    std::int32_t AreaWest = -kWholeWorldEast;
    std::vector<NavEntry> NavDatabase;
    std::uint32_t NavEntryCount = 0;
    std::vector<AirspaceEntry> AirspaceOverlay;
    std::uint32_t AirspaceEntryCount = 0;
    // Set at start and whenever the arrays must be reloaded before the instrument views draw.
    std::uint8_t ArraysPending = 0;

    std::uint32_t NavVolumeGuid = 0;  // the mounted nav database volume, 0 when none
    std::uint32_t NavSearchKey =      // the nav property the waypoint search matches
        platform::MakePropId(100, platform::kCevtLpwstr);
};

}  // namespace aerix
