// Waypoint sequencing shared by the MAP view and the instrument views: the active sector moves on
// once its end point falls behind, a direct-to flies to its own waypoint until it is reached, and
// the leg being flown is handed to the data bar.
#pragma once

#include <vector>

#include "gps/gps_state.hpp"
#include "gps/leg_state.hpp"
#include "store/records.hpp"
#include "views/map_types.hpp"

namespace aerix {

// The leg being flown after sequencing. Positions are CentiMinutes; course is the desired track
// in degrees true (the sector's course, or the direct-to course).
struct ActiveLeg {
    DataBarInfo bar;
    bool valid = false;
    bool direct = false;  // a direct-to leg, not one of the plan's
    double startLatitude = 0.0, startLongitude = 0.0;
    double endLatitude = 0.0, endLongitude = 0.0;
    double course = 0.0;
    // The reference every direction of this frame is shown in.
    DirectionReference reference;
};

// Sequences legState.ActiveSectorIndex over the plan's sectors for gps.Fix, raising
// legState.LegChange when it advances, and stores the data bar's content in dataBar. While a
// direct-to is active the leg runs to its waypoint; once that falls behind the direct-to ends and
// the plan goes on from the sector that starts there.
ActiveLeg SequenceActiveLeg(const std::vector<SectorRecord>& sectors, const GpsState& gps,
                            LegState& legState, DataBarInfo& dataBar);

// The sector the plan goes on with once a direct-to reaches (latitude, longitude): the first one
// that starts there (at or after the active one, if any does), else the one after the sector
// that ends there; the active one when the waypoint is not on the route.
std::uint32_t SectorAfterDirectTo(const std::vector<SectorRecord>& sectors, std::int32_t latitude,
                                  std::int32_t longitude, std::uint32_t active);

}  // namespace aerix
