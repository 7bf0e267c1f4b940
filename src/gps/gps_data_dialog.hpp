// The "GPS data" dialog: the present position, ground speed and track, refreshed each
// second.
#pragma once

#include <string>

#include "gps/gps_state.hpp"

namespace aerix {

inline constexpr const char* kGpsDataTitle = "GPS data";
inline constexpr int kGpsDataTimerId = 1;
inline constexpr int kGpsDataTimerMs = 1000;

struct GpsDataTexts {
    std::u16string position;  // the fix's position text
    std::u16string speed;     // "%1.0f Kts"
    std::u16string track;     // "244°M", or "244°T" when no variation is known
};

class GpsDataDialogModel {
  public:
    // The three texts from the latest fix published in gps.
    GpsDataTexts Texts(const GpsState& gps) const;
    // On closing: the navigation-bar title goes back to "Aerix".
    void Close();
};

}  // namespace aerix
