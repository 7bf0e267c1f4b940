// The leg being flown: which sector, a direct-to that replaces it, and the request to end it.
// Shared by the feeds (the simulator flies it), the views (they sequence it) and the planning
// dialogs (a direct-to starts here); the atomics are read by the simulator's thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

namespace aerix {

struct LegState {
    // Index of the sector being flown (0 = first); the feeds reset it, the views advance it and
    // the simulator follows it when a direct-to ends.
    std::atomic<std::uint32_t> ActiveSectorIndex{0};
    // Set by the views and the waypoint dialog to end the leg being flown; cleared by the
    // simulator.
    std::atomic<std::uint8_t> LegChange{0};
    // Direct-to leg (CentiMinutes, degrees true); a start latitude of 0 means none.
    std::atomic<std::int32_t> DirectToStartLatitude{0};
    std::atomic<std::int32_t> DirectToStartLongitude{0};
    std::atomic<std::int32_t> DirectToCourse{0};
    // The waypoint a direct-to flies to (user-interface thread only): what the readouts name and
    // measure to while the direct-to is active.
    std::u16string DirectToName;
    std::int32_t DirectToTargetLatitude = 0;
    std::int32_t DirectToTargetLongitude = 0;
};

}  // namespace aerix
