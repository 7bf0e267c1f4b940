#include "app/command_table.hpp"

#include <array>

#include "app/command_ids.hpp"

namespace aerix {

namespace {

using namespace cmd;

constexpr std::array kMenu = {
    MenuEntry{"File", "", "New plan", kNewPlan},
    MenuEntry{"File", "", "Open plan", kOpenPlan},
    MenuEntry{"File", "", "Delete plan", kDeletePlan},
    MenuEntry{"File", "", "Reverse plan", kReversePlan},
    MenuEntry{"File", "", "Help", kHelp},
    MenuEntry{"File", "", "Exit", kExit},
    MenuEntry{"Edit", "", "New sector", kNewSector},
    MenuEntry{"Edit", "", "Delete a sector", kDeleteSector},
    MenuEntry{"Edit", "", "Insert a sector", kInsertSector},
    MenuEntry{"Edit", "", "Edit a Sector", kEditSector},
    MenuEntry{"Edit", "", "Wind table", kWindTable},
    MenuEntry{"View", "", "Next wpt", kNextWaypoint, true},
    MenuEntry{"View", "", "Scale in", kScaleIn, true},
    MenuEntry{"View", "", "Scale out", kScaleOut, true},
    MenuEntry{"View", "", "PLAN", kShowPlan},
    MenuEntry{"View", "", "MAP", kShowMap},
    MenuEntry{"View", "", "HSI", kShowHsi},
    MenuEntry{"View", "", "AERIX", kShowAerix},
    MenuEntry{"View", "", "GPS data", kGpsData, true},
    MenuEntry{"Utils", "", "Preferences", kPreferences},
    MenuEntry{"Utils", "Maps", "Load", kMapLoad},
    MenuEntry{"Utils", "Maps", "Edit", kMapEdit},
    MenuEntry{"Utils", "Maps", "Calibrate NE", kCalibrateNe, true},
    MenuEntry{"Utils", "Maps", "Calibrate SW", kCalibrateSw, true},
    MenuEntry{"Utils", "", "Setup A/c", kSetupAircraft},
    MenuEntry{"Utils", "", "About", kAbout},
    MenuEntry{"Tools", "E6b utilities", "Timer", kTimer},
    MenuEntry{"Tools", "E6b utilities", "Conversions", kConversions},
    MenuEntry{"Tools", "E6b utilities", "Sunrise/set", kSunTimes},
    MenuEntry{"Tools", "E6b utilities", "Xwind component", kCrosswind},
    MenuEntry{"Tools", "E6b utilities", "Holding pattern", kHolding},
    MenuEntry{"Tools", "E6b utilities", "Density/Press alt", kDensityAltitude},
    MenuEntry{"Tools", "E6b utilities", "True Altitude", kTrueAltitude},
    MenuEntry{"Tools", "E6b utilities", "Logbook totaliser", kLogbook},
    MenuEntry{"Tools", "Database", "Add", kDatabaseAdd},
    MenuEntry{"Tools", "Database", "Edit", kDatabaseEdit},
    MenuEntry{"Tools", "Database", "List view", kDatabaseList},
    MenuEntry{"Tools", "Database", "New", kDatabaseNew},
    MenuEntry{"Tools", "Database", "Open", kDatabaseOpen},
    MenuEntry{"Tools", "Database", "Delete", kDatabaseDelete},
    MenuEntry{"Tools", "", "Playback GPS data (Norm)", kPlaybackNorm},
    MenuEntry{"Tools", "", "Playback GPS data (Fast)", kPlaybackFast},
    MenuEntry{"Tools", "", "Stop playback", kStopPlayback, true},
    MenuEntry{"Tools", "", "Start simulation", kStartSimulation},
    MenuEntry{"Tools", "", "Stop simulation", kStopSimulation, true},
    MenuEntry{"Tools", "", "Connect to GPS", kConnectGps},
    MenuEntry{"Tools", "", "Disconnect GPS", kDisconnectGps, true},
    MenuEntry{"Tools", "", "GPS setup", kGpsSetup},
    MenuEntry{"Tools", "", "Fuel", kFuel},
    MenuEntry{"Tools", "", "Wt. Bal", kWeightBalance},
};

}  // namespace

std::span<const MenuEntry> MenuTable() {
    return kMenu;
}

MenuState::MenuState() {
    for (const auto& e : kMenu)
        enabled_[e.id] = !e.greyedAtStart;
}

bool MenuState::Enabled(unsigned id) const {
    auto it = enabled_.find(id);
    return it == enabled_.end() || it->second;
}

void MenuState::Enable(unsigned id, bool enabled) {
    auto& slot = enabled_[id];
    if (slot == enabled)
        return;
    slot = enabled;
    if (listener_)
        listener_(id, enabled);
}

}  // namespace aerix
