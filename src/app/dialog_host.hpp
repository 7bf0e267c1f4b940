// The dialogs the main window opens, each behind one identifier. The front end runs the dialog
// (widgets over its model) and returns how it ended; tests answer from a script. A dialog the
// front end does not offer yet returns kDialogUnavailable and the command does nothing.
#pragma once

namespace aerix {

enum class Dialog {
    // start-up and shell
    Splash,
    Disclaimer,
    Loading,
    Preferences,
    About,
    // planning
    NewPlan,
    OpenPlan,
    DeletePlan,
    NewSector,
    InsertSector,
    EditSector,
    WindTable,
    // GPS
    GpsData,
    GpsSetup,
    // maps
    MapLoad,
    MapEdit,
    Calibrate,
    // aircraft
    AircraftSetup,
    Fuel,
    WeightBalanceLoading,
    WeightBalanceResult,
    // utilities
    Timer,
    Conversions,
    SunTimes,
    Crosswind,
    Holding,
    DensityAltitude,
    TrueAltitude,
    Logbook,
    // navigation database management
    DatabaseAdd,
    DatabaseEdit,
    DatabaseList,
    DatabaseNew,
};

// How a dialog ended.
inline constexpr int kDialogUnavailable = 0;
inline constexpr int kDialogOk = 1;         // OK, Accept
inline constexpr int kDialogCancel = 2;     // X, EXIT
inline constexpr int kDialogPickOnMap = 3;  // the new-sector dialog hands the pick to the map

class DialogHost {
  public:
    virtual ~DialogHost() = default;
    // Runs the dialog modally and returns how it ended.
    virtual int Run(Dialog dialog) = 0;
};

}  // namespace aerix
