// The program-wide state record. There is exactly one (g_app), statically allocated, living for
// the whole run; every subsystem reads and writes its own group of fields in it directly.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "aircraft/loading.hpp"
#include "gps/fix_publisher.hpp"
#include "gps/gps_fix.hpp"
#include "platform/byte_source.hpp"
#include "platform/prop_val.hpp"
#include "platform/recording_file.hpp"
#include "platform/text.hpp"
#include "store/nav_types.hpp"
#include "store/records.hpp"
#include "views/map_types.hpp"

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
    std::uint8_t FuelCalc = 1;          // "FuelCalc" (written, never read back: every start
                                        // begins from these built-in values)
    std::uint8_t IcaoSearch = 0;        // "IcaoSearch" (written, never read back)

    // Main window.
    std::uint32_t ViewMode = kViewNone;
    std::uint32_t GpsSource = kSourceNone;
    platform::RecordingFile GpsRecording;

    // The present fix as the user-interface thread paints it: a copy of PublishedFix taken by
    // TakeFixSnapshot() (gps/fix_publication.hpp) before painting.
    GpsFix Fix;

    // Stopwatch ("Timer" dialog): the counters outlive the dialog; StopwatchTimer is the
    // identifier of its running dialog timer, 0 when stopped.
    std::int32_t StopwatchSeconds = 0;
    std::int32_t StopwatchMinutes = 0;
    std::int32_t StopwatchHours = 0;
    std::uint32_t StopwatchTimer = 0;

    // Navigation database and airspace in memory, and the area they are kept for (inclusive
    // bounds in CentiMinutes; the whole world unless narrowed).
    std::int32_t AreaNorth = kWholeWorldNorth;
    std::int32_t AreaSouth = -kWholeWorldNorth;
    std::int32_t AreaEast = kWholeWorldEast;
    std::int32_t AreaWest = -kWholeWorldEast;
    std::vector<NavEntry> NavDatabase;
    std::uint32_t NavEntryCount = 0;
    std::vector<AirspaceEntry> AirspaceOverlay;
    std::uint32_t AirspaceEntryCount = 0;
    // Set at start and whenever the arrays must be reloaded before the instrument views draw.
    std::uint8_t ArraysPending = 0;

    // Record store: the databases opened, the nav volume and search, the current aircraft.
    std::uint32_t LastOpenedDatabaseId = 0;  // object id of the database last opened (0: failed)
    std::uint32_t NavVolumeGuid = 0;         // the mounted nav database volume, 0 when none
    std::uint32_t NavSearchKey =             // the nav property the waypoint search matches
        platform::MakePropId(100, platform::kCevtLpwstr);
    std::uint32_t PlanSectorCount = 0;  // sectors of the loaded plan (kept by plan management)
    AircraftRecord CurrentAircraft;     // the aircraft named by AircraftReg, read at start

    // ---- Main window (app/main_window): what the view commands and keys set ----
    // View-state word of the map view, preset at start.
    std::uint32_t ViewStateWord = 0;
    // Instrument views: range step 1, 2, 4, 8 or 16; which of the two is drawn and its centre.
    std::uint32_t InstrumentRangeStep = 1;
    std::uint8_t InstrumentAerix = 0;
    int InstrumentCentreX = 120;
    int InstrumentCentreY = 135;
    // Plan view: first row shown.
    std::uint32_t PlanScrollRow = 0;

    // ---- Map view and map management (views/) ----
    // The chart now loaded: its pocket path, its pixels with the route burnt in (the map's
    // drawing surface), its size and its calibration (MapRecord properties 301-313).
    WideBuf<256> CurrentMapPath;
    platform::Bitmap MapBitmap;
    bool MapLoaded = false;
    std::int32_t MapWidth = 0;
    std::int32_t MapHeight = 0;
    std::array<double, 13> MapCalibration{};
    // The route burnt into MapBitmap (start and end of each leg, then a direct-to leg), so that
    // a paint can tell when the plan changed under the chart; empty when none was burnt.
    std::vector<std::int32_t> MapBurntRoute;
    bool MapRouteBurnt = false;
    // No chart has been chosen for a real fix yet: the first fix chooses one whatever is shown.
    bool MapAwaitingFix = true;
    // Where the aircraft is normally drawn in the 240 x 240 chart area, the chart pixel drawn
    // there, where the symbol really goes (chart-area coordinates) and the slack allowed beyond
    // the right and bottom edges at zoom 1.
    std::int32_t AnchorX = 120;
    std::int32_t AnchorY = 120;
    std::int32_t MapCenterX = 120;
    std::int32_t MapCenterY = 120;
    std::int32_t AircraftScreenX = 120;
    std::int32_t AircraftScreenY = 120;
    std::int32_t MapSlackX = 0;
    std::int32_t MapSlackY = 0;
    // 0.25, 0.5, 1, 2 or 4.
    double MapZoom = 1.0;
    // 0 choose by the present detail, 1 the next more detailed chart, -1 the next less detailed.
    std::int32_t MapChangeRequest = 0;
    std::uint8_t InvalidSignalPending = 0;
    std::uint8_t SymbolBlink = 0;
    // What the data bar shows: the waypoint being flown.
    DataBarInfo DataBar;
    // Calibration: the corner the pilot marks (1 NE = first reference point, 0 SW = second) and
    // which corners have been entered.
    std::uint8_t CalibrateCorner = 0;
    std::uint8_t CalibrationFirstDone = 0;
    std::uint8_t CalibrationSecondDone = 0;
    // "Load bitmap (to calibrate)": the storage places offered, the one chosen and its pattern.
    std::vector<std::u16string> StorageList;
    WideBuf<260> SelectedStorage;
    WideBuf<260> BitmapSearchPattern;

    // ---- Flight planning and the current aircraft's fuel figures (planning/, aircraft/) ----
    // Taxi fuel and fuel-units code (1 lb, 2 kg, 3 ltr, 4 Imp gal, 5 US gal) of the current
    // aircraft, set whenever it is loaded.
    double TaxiFuel = 0.0;
    std::uint32_t FuelUnits = 0;
    // Left by the fuel plan: climb + cruise + descent fuel of the plan, and the total last shown.
    double PlanTripFuel = 0.0;
    std::uint32_t PlanTotalFuel = 0;
    // The sector the PLAN view highlights (0 = first): the one the sector commands act on.
    std::uint32_t HighlightedSector = 0;

    // ---- Weight and balance (aircraft/) ----
    // The loading last confirmed in the loading dialog; the result dialog works it out.
    AircraftLoading WbLoading;

    // ---- GPS feeds: receiver, playback and simulator (gps/) ----
    // Feeds publish whole fixes here; nothing else writes it but ClearVoid.
    FixPublisher PublishedFix;
    // A device path, "gpsd" or "tcp:HOST:PORT" chosen in GPS setup; when set it is used instead
    // of PortName (whose 12 characters hold only "COM1:".."COM9:" and "NavM").
    WideBuf<256> PortDevice;
    // The open receiver port; null when closed. Closing it ends the reader.
    std::shared_ptr<platform::ByteSource> GpsPort;
    // Index of the sector being flown (0 = first); the feeds reset it, the views advance it and
    // the simulator follows it when a direct-to ends.
    std::atomic<std::uint32_t> ActiveSectorIndex{0};
    // PublishedFix's sequence when the present feed started: only later fixes sequence the plan.
    std::uint64_t FeedStartSequence = 0;
    // Playback waits 100 ms between lines instead of 1000.
    std::atomic<std::uint8_t> PlaybackFast{0};
    // Set by the views and the waypoint dialog to end the leg being flown; cleared by the
    // simulator.
    std::atomic<std::uint8_t> LegChange{0};
    // Direct-to leg (CentiMinutes, degrees true); a start latitude of 0 means none.
    std::atomic<std::int32_t> DirectToStartLatitude{0};
    std::atomic<std::int32_t> DirectToStartLongitude{0};
    std::atomic<std::int32_t> DirectToCourse{0};
    // The waypoint a direct-to flies to (user-interface thread only): what the readouts name and
    // measure to while the direct-to is active.
    std::u16string DirectToName;
    std::int32_t DirectToTargetLatitude = 0;
    std::int32_t DirectToTargetLongitude = 0;
    // Distance flown on the current simulated leg, radians of arc (simulator thread only).
    double SimulatedDistance = 0.0;
    // Simulator steps since the simulation started, and its screen position and offsets.
    std::atomic<std::uint32_t> SimulatorStepCount{0};
    int SimulatorScreenX = 120;
    int SimulatorScreenY = 120;
    int SimulatorOffsetX = 0;
    int SimulatorOffsetY = 0;
    // The AERIX/HSI drawing thread is running: feeds then leave the fix alone.
    std::atomic<bool> InstrumentDrawingRunning{false};
    // Feed threads: the receiver and the simulator share one slot, playback has its own. A feed
    // that stops itself parks its thread in the retired slot, joined at the next start or stop.
    // Keep these last: destruction joins them before the fields they use go away.
    std::jthread GpsThread;
    std::jthread PlaybackThread;
    std::jthread RetiredGpsThread;
    std::jthread RetiredPlaybackThread;
};

extern AppState g_app;

// Puts g_app back to its state at program start (for tests and tools that run several
// scenarios in one process). No other thread may be using it.
void ResetAppState();

}  // namespace aerix
