// The flight simulator: flies the active plan leg by leg, one step a second, from each leg's
// start point along its true course at its planned ground speed.
#pragma once

#include <cstdint>
#include <functional>
#include <stop_token>

#include "gps/gps_state.hpp"
#include "gps/leg_state.hpp"

namespace aerix {

// What the simulator needs of a sector.
struct SimLeg {
    std::int32_t startLatitude = 0;   // CentiMinutes
    std::int32_t startLongitude = 0;  // CentiMinutes
    double trueCourse = 0.0;          // degrees true
    double magneticVariation = 0.0;   // degrees, west positive
    std::int32_t groundSpeed = 0;     // planned ground speed, whole knots
};

// Where the legs come from: sector `index` (0 = first) of the active plan, and how many sectors
// it has. The shell gives the plan store's when it starts the simulation; an empty source means
// no plan, and nothing is flown.
struct SimLegSource {
    std::function<bool(int index, SimLeg* leg)> readLeg;
    std::function<int()> sectorCount;
};

// Called after each step with the leg index being flown (for the simulate tool); may be empty.
using SimStepObserver = std::function<void(int legIndex)>;

// The simulator thread: flies the legs of `source` (or the direct-to in `flown`), publishing to
// gps; ends the leg `flown` asks it to. Ends when a sector cannot be read or a stop is requested.
void SimulatorThread(std::stop_token stop, GpsState& gps, LegState& flown,
                     const SimLegSource& source, SimStepObserver observer = {});

}  // namespace aerix
