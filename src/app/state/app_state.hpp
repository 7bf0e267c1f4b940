// The program-wide state record. There is exactly one (g_app), statically allocated, living for
// the whole run; every subsystem reads and writes its own group of fields in it directly.
#pragma once

#include <cstdint>

#include "platform/prop_val.hpp"
#include "platform/recording_file.hpp"
#include "platform/text.hpp"
#include "store/records.hpp"

namespace aerix {

// What the main window shows.
enum ViewModeValue : std::uint32_t {
    kViewNone = 0,
    kViewPlan = 1,
    kViewInstruments = 2,  // AERIX or HSI
    kViewMap = 3,
    kViewMapEdit = 4,
    kViewCalibrate = 5,
    kViewPickSector = 14,
};

// Where the fix comes from.
enum GpsSourceValue : std::uint32_t {
    kSourceNone = 0,
    kSourceRealtime = 1,
    kSourceSimulated = 2,
    kSourceRecorded = 3,
};

// The current position fix. Latitude and longitude are CentiMinutes (degrees x 6000), north and
// east positive; variation is west positive.
struct GpsFix {
    double latitude = 0.0;
    double longitude = 0.0;
    double groundSpeed = 0.0;
    double trueTrack = 0.0;
    double magneticVariation = 0.0;
    double magneticTrack = 0.0;
    WideBuf<28> positionText;
    std::uint8_t FixVoid = 0;
};

struct AppState {
    // Current selections (persisted).
    WideBuf<24> AircraftReg;          // "AcReg"
    WideBuf<90> NavDatabaseName;      // "CuDbase"
    WideBuf<50> ActivePlanName;       // "CuPlanName"
    std::uint32_t CurrentPlanId = 0;  // "CurrentPlan": object id of the plan's database

    // GPS port (persisted).
    WideBuf<12> PortName;        // "CommPort"
    std::uint32_t BaudRate = 0;  // "BaudRate"

    // Display flags, one byte each (persisted).
    std::uint8_t ShowLatLonMap = 0;     // "shlinmap"
    std::uint8_t ShowLatLonHsi = 0;     // "shlinhsi"
    std::uint8_t ShowScaleMap = 0;      // "shsinmap"
    std::uint8_t ShowScaleHsi = 0;      // "shsinhsi"
    std::uint8_t ShowAirspace = 0;      // "showAirspace"
    std::uint8_t ShowTrackPointer = 0;  // "showTrkPointer"

    // Input, recording and planning options (persisted).
    std::uint8_t EnableHotKeys = 0;     // "EnableHotKeys"
    std::uint8_t RecordGpsData = 0;     // "recordGPSdata"
    std::uint8_t OverwriteGpsData = 0;  // "overwriteGPSdata"
    std::uint8_t FuelCalc = 0;          // "FuelCalc" (written, never read back)
    std::uint8_t IcaoSearch = 0;        // "IcaoSearch" (written, never read back)

    // Main window.
    std::uint32_t ViewMode = kViewNone;
    std::uint32_t GpsSource = kSourceNone;
    platform::RecordingFile GpsRecording;

    // The present fix.
    GpsFix Fix;

    // Record store: the databases opened, the nav volume and search, the current aircraft.
    std::uint32_t LastOpenedDatabaseId = 0;  // object id of the database last opened (0: failed)
    std::uint32_t NavVolumeGuid = 0;         // the mounted nav database volume, 0 when none
    std::uint32_t NavSearchKey =             // the nav property the waypoint search matches
        platform::MakePropId(100, platform::kCevtLpwstr);
    std::uint32_t PlanSectorCount = 0;  // sectors of the loaded plan (kept by plan management)
    AircraftRecord CurrentAircraft;     // the aircraft named by AircraftReg, read at start
};

extern AppState g_app;

// Puts g_app back to its state at program start (for tests and tools that run several
// scenarios in one process). No other thread may be using it.
void ResetAppState();

}  // namespace aerix
