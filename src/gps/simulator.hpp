// The flight simulator: flies the active plan leg by leg, one step a second, from each leg's
// start point along its true course at its planned ground speed.
#pragma once

#include <cstdint>
#include <functional>
#include <stop_token>

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
// it has. The plan store supplies them; without one there is no plan and nothing is flown.
struct SimLegSource {
    std::function<bool(int index, SimLeg* leg)> readLeg;
    std::function<int()> sectorCount;
};

// Replaces the leg source; an empty one means "no plan".
void SetSimLegSource(SimLegSource source);
bool HasSimLegSource();
SimLegSource CurrentSimLegSource();

// Called after each step with the leg index being flown (for the simulate tool); may be empty.
using SimStepObserver = std::function<void(int legIndex)>;

// The simulator thread. Ends when a sector cannot be read or a stop is requested.
void SimulatorThread(std::stop_token stop, SimStepObserver observer = {});

}  // namespace aerix
