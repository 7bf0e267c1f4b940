// The centre-of-gravity envelope graph: arm across, weight up, the envelope polygon, tick labels
// on both axes, the loaded point and the zero-fuel point joined by the fuel-burn line.
#pragma once

#include <vector>

#include "aircraft/weight_balance.hpp"
#include "platform/canvas.hpp"
#include "store/records.hpp"

namespace aerix {

// Where arms and weights land inside the area the graph is given.
struct EnvelopeGraphFrame {
    platform::Rect Plot;  // the axes' box
    double ArmMin = 0, ArmMax = 1, WeightMin = 0, WeightMax = 1;
    platform::Point Map(double arm, double weight) const;
};

// The graph ranges are the aircraft's (properties 624-627); when they are missing or do not hold
// the envelope and the loaded points, they are widened to hold them.
EnvelopeGraphFrame MakeEnvelopeGraphFrame(const platform::Rect& area,
                                          const AircraftRecord& aircraft,
                                          const std::vector<EnvelopePoint>& envelope,
                                          const WeightBalanceResult& result);

// Tick values from lo to hi at a round step (1, 2 or 5 times a power of ten), about `count` of
// them.
std::vector<double> GraphTicks(double lo, double hi, int count);

void DrawEnvelopeGraph(platform::Canvas& canvas, const platform::Rect& area,
                       const AircraftRecord& aircraft, const std::vector<EnvelopePoint>& envelope,
                       const WeightBalanceResult& result);

// Colours the graph uses, for tests and the key.
inline constexpr platform::Color kEnvelopeFill = platform::Rgb(200, 235, 200);
inline constexpr platform::Color kLoadedInside = platform::Rgb(0, 110, 0);
inline constexpr platform::Color kLoadedOutside = platform::Rgb(210, 0, 0);

}  // namespace aerix
