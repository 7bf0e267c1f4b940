// Waypoint sequencing shared by the MAP view and the instrument views: the active sector moves on
// once its end point falls behind, and the leg being flown is handed to the data bar.
#pragma once

#include <vector>

#include "store/records.hpp"
#include "views/map_types.hpp"

namespace aerix {

// The leg being flown after sequencing. Positions are CentiMinutes; course is the desired track
// in degrees true (the sector's course, or the direct-to course).
struct ActiveLeg {
    DataBarInfo bar;
    bool valid = false;
    double startLatitude = 0.0, startLongitude = 0.0;
    double endLatitude = 0.0, endLongitude = 0.0;
    double course = 0.0;
};

// Sequences g_app.ActiveSectorIndex over the plan's sectors for the position (CentiMinutes),
// raising g_app.LegChange when it advances, and stores the data bar's content in g_app.DataBar.
ActiveLeg SequenceActiveLeg(const std::vector<SectorRecord>& sectors, double latitude,
                            double longitude);

}  // namespace aerix
