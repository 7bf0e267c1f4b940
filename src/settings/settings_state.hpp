// The pilot's settings and selections: what is kept in the registry between runs (current
// aircraft, navigation database, plan, GPS port, display and recording options) and which view
// and position source are chosen now. Below every subsystem, so that each can be given them.
#pragma once

#include <cstdint>

#include "platform/text.hpp"

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

struct SettingsState {
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
    std::uint8_t FuelCalc = 1;          // "FuelCalc" (written, never read back: every start
                                        // begins from these built-in values)
    std::uint8_t IcaoSearch = 0;        // "IcaoSearch" (written, never read back)

    // Chosen now, not kept.
    std::uint32_t ViewMode = kViewNone;
    std::uint32_t GpsSource = kSourceNone;
};

}  // namespace aerix
