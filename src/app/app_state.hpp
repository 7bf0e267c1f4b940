// The program-wide state record: one (g_app), statically allocated, living for the whole run. It
// is a composition of groups, each defined by the subsystem that owns it; a subsystem is given
// the groups it works on.
#pragma once

#include "aircraft/aircraft_state.hpp"
#include "gps/gps_state.hpp"
#include "gps/leg_state.hpp"
#include "planning/plan_state.hpp"
#include "settings/settings_state.hpp"
#include "store/nav_data_state.hpp"
#include "utilities/stopwatch_state.hpp"
#include "views/view_state.hpp"

namespace aerix {

struct AppState {
    SettingsState settings;
    NavDataState nav;
    PlanState plan;
    AircraftState aircraft;
    StopwatchState stopwatch;
    ViewState view;
    LegState leg;
    // Last: destroying it joins the feed threads before the groups they use go away.
    GpsState gps;
};

extern AppState g_app;

// Puts g_app back to its state at program start (for tests and tools that run several
// scenarios in one process). No other thread may be using it.
void ResetAppState();

}  // namespace aerix
