// Recomputation of every sector of the active plan: wind at the sector's altitude, heading,
// ground speed, time and fuel, and (route form) course, distance and the chaining of each sector
// to the end of the one before.
//
// The four sector texts: 401 start name, 402 end name, 403 start ident, 404 end ident.
#pragma once

#include <cstdint>

#include "planning/plan_state.hpp"
#include "settings/settings_state.hpp"

namespace aerix {

// The ground speed a sector stores: the whole knots nearest, halves rounding up.
std::int16_t RoundGroundSpeed(double groundSpeed);
// A true heading turned magnetic by a west-positive variation, folded into 0..360.
double MagneticHeadingOf(double variation, double trueHeading);

// refreshAirspeeds 1: each sector takes the current aircraft's true airspeed for its phase (and
// stores it); 0: it keeps its own. Course and distance stay as stored. Stops silently when the
// aircraft database holds no aircraft or none named by settings.AircraftReg. Every sector is
// rewritten in one transaction: false (after the store's message) when none of it is kept.
bool RecomputePlan(const SettingsState& settings, PlanState& plan, int refreshAirspeeds);
// As RecomputePlan, after starting each sector but the first where the one before ends (names
// and idents along with the position) and recomputing its rhumb-line course and distance.
bool RecomputePlanRoute(const SettingsState& settings, PlanState& plan, int refreshAirspeeds);

// "Reverse current plan?": each sector's start and end swap, the last becomes the first, and the
// route is recomputed, all in one transaction. False (after the store's message) when the plan is
// left as it was.
bool ReversePlan(const SettingsState& settings, PlanState& plan);

// The number of sectors of the active plan, quietly 0 without one; kept in plan.PlanSectorCount.
std::uint32_t RefreshPlanSectorCount(const SettingsState& settings, PlanState& plan);

}  // namespace aerix
