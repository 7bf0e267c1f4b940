// The Preferences dialog model: check boxes over the display, input and recording flags, and the
// choice to search waypoints by ICAO ident.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "app/app_state.hpp"

namespace aerix {

class PreferencesDialog {
  public:
    enum Box {
        kLatLonMap,
        kLatLonHsi,
        kUseButtons,
        kScaleMap,
        kScaleHsi,
        kAirspace,
        kRecordGps,
        kOverwriteGps,
        kTrackPointer,
        kIcaoSearch,
        kBoxCount
    };

    static constexpr std::string_view kTitle = "Preferences";
    // Labels in their order in the dialog.
    static constexpr std::array<std::string_view, kBoxCount> kLabels = {
        "Show lat-long in MAP",
        "Show lat-long in AERIX/HSI",
        "Use buttons to change views",
        "Show scale in MAP",
        "Show scale in AERIX/HSI",
        "Show airspace in AERIX/HSI",
        "Record GPS data",
        "Overwrite existing GPS data",
        "Show Track pointer in map",
        "Search waypoints by ICAO code",
    };

    // Shows the title and checks each box whose flag is exactly 1.
    void Open();
    bool Checked(Box box) const { return checked_[box]; }
    // A tap on a box. "Use buttons to change views" acts at once, even if the dialog is then
    // cancelled.
    void Click(Box box);
    // Copies the boxes to the flags and closes; returns 1.
    int Ok();
    // Closes without copying; returns 2.
    int Cancel();

  private:
    static std::uint8_t SettingsState::*FlagOf(Box box);
    void Close();
    std::array<bool, kBoxCount> checked_{};
};

}  // namespace aerix
