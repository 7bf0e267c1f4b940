// One second of simulated flight: the rhumb-line destination from a leg's start point after the
// whole distance flown on the leg so far.
#pragma once

#include <cstdint>
#include <stop_token>

namespace aerix {

// Waits one second (on the platform clock), adds two seconds' flight at `speed` knots to
// `distance`, the radians flown on the leg (zeroed first when restart is set), and writes the
// position reached on `course` from the start point. Positions are CentiMinutes. Returns the
// latitude.
double SimulationStep(double& distance, std::int32_t startLatitude, std::int32_t startLongitude,
                      double course, std::int32_t speed, std::uint8_t restart, double& latitude,
                      double& longitude, std::stop_token stop = {});

}  // namespace aerix
