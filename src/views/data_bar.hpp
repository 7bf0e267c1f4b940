// The data bar the map shares with the instrument views: the waypoint being flown with its
// bearing, distance and the angle between it and the course.
#pragma once

#include <string>

#include "platform/canvas.hpp"
#include "views/map_types.hpp"

namespace aerix {

// Where the MAP view puts it: the rows below the chart.
inline constexpr platform::Rect kMapDataBar{0, 254, 240, 268};

// The bar's text, e.g. "EGLL  BRG 273°M  12.4 nm  R 15°"; "no active waypoint" when none,
// "EGLL  NO FIX" before the first fix.
std::string DataBarText(const DataBarInfo& info);
void DrawDataBar(platform::Canvas& canvas, const DataBarInfo& info, const platform::Rect& area);

}  // namespace aerix
