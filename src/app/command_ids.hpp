// The main window's command identifiers: menu items and the menu-bar tool buttons.
#pragma once

namespace aerix::cmd {

// File
inline constexpr unsigned kNewPlan = 40031;
inline constexpr unsigned kOpenPlan = 40032;
inline constexpr unsigned kDeletePlan = 40033;
inline constexpr unsigned kReversePlan = 40065;
inline constexpr unsigned kHelp = 40071;
inline constexpr unsigned kExit = 40005;
// Edit
inline constexpr unsigned kNewSector = 40023;
inline constexpr unsigned kDeleteSector = 40034;
inline constexpr unsigned kInsertSector = 40063;
inline constexpr unsigned kEditSector = 40064;
inline constexpr unsigned kWindTable = 40038;
// View
inline constexpr unsigned kNextWaypoint = 40061;
inline constexpr unsigned kScaleIn = 40013;
inline constexpr unsigned kScaleOut = 40014;
inline constexpr unsigned kShowPlan = 40039;
inline constexpr unsigned kShowMap = 40040;
inline constexpr unsigned kShowHsi = 40041;
inline constexpr unsigned kShowAerix = 40053;
inline constexpr unsigned kGpsData = 40072;
// Utils
inline constexpr unsigned kPreferences = 40070;
inline constexpr unsigned kMapLoad = 40007;
inline constexpr unsigned kMapEdit = 40059;
inline constexpr unsigned kCalibrateNe = 40008;
inline constexpr unsigned kCalibrateSw = 40009;
inline constexpr unsigned kSetupAircraft = 40048;
inline constexpr unsigned kAbout = 40003;
// Tools, E6b utilities
inline constexpr unsigned kTimer = 40076;
inline constexpr unsigned kConversions = 40077;
inline constexpr unsigned kSunTimes = 40078;
inline constexpr unsigned kCrosswind = 40080;
inline constexpr unsigned kHolding = 40079;
inline constexpr unsigned kDensityAltitude = 40081;
inline constexpr unsigned kTrueAltitude = 40083;
inline constexpr unsigned kLogbook = 40082;
// Tools, Database
inline constexpr unsigned kDatabaseAdd = 40055;
inline constexpr unsigned kDatabaseEdit = 40027;
inline constexpr unsigned kDatabaseList = 40067;
inline constexpr unsigned kDatabaseNew = 40042;
inline constexpr unsigned kDatabaseOpen = 40043;
inline constexpr unsigned kDatabaseDelete = 40062;
// Tools
inline constexpr unsigned kPlaybackNorm = 40074;
inline constexpr unsigned kPlaybackFast = 40085;
inline constexpr unsigned kStopPlayback = 40075;
inline constexpr unsigned kStartSimulation = 40057;
inline constexpr unsigned kStopSimulation = 40058;
inline constexpr unsigned kConnectGps = 40054;
inline constexpr unsigned kDisconnectGps = 40056;
inline constexpr unsigned kGpsSetup = 40066;
inline constexpr unsigned kFuel = 40051;
inline constexpr unsigned kWeightBalance = 40052;
// Menu-bar tool buttons: their meaning depends on the view.
inline constexpr unsigned kButtonUp = 1000;
inline constexpr unsigned kButtonDown = 1001;
inline constexpr unsigned kButtonAction = 1002;

}  // namespace aerix::cmd
