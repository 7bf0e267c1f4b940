// What the MAP view, the calibration view and the instrument views paint from and update: their
// own state, the display flags and view mode, the fix, and the leg being flown (a paint sequences
// it). The shell hands the program's groups in; a test hands in the groups it built.
#pragma once

#include "gps/gps_state.hpp"
#include "gps/leg_state.hpp"
#include "settings/settings_state.hpp"
#include "views/view_state.hpp"

namespace aerix {

struct ViewInputs {
    ViewState& view;
    const SettingsState& settings;
    // Painting acknowledges a void fix, so the feed state is not read-only.
    GpsState& gps;
    LegState& leg;
};

}  // namespace aerix
