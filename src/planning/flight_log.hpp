// The flight log the PLAN view draws: one row per sector of the active plan and the totals, with
// the sector being flown and the highlighted one marked.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "gps/leg_state.hpp"
#include "planning/plan_state.hpp"
#include "settings/settings_state.hpp"
#include "store/records.hpp"

namespace aerix {

// Where a readout is written: the window (degree signs, "≤") or a terminal (plain ASCII).
enum class LogStyle { kWindow, kConsole };

struct FlightLogRow {
    std::uint32_t oid = 0;
    SectorRecord sector;
    bool active = false;       // the sector being flown while a feed runs
    bool highlighted = false;  // the one the sector commands act on (PlanState::HighlightedSector)

    // False when the wind leaves no ground speed (0 kt or less): the sector cannot be flown, and
    // its stored time and fuel mean nothing.
    bool Flyable() const { return sector.GroundSpeed > 0; }

    // The columns as the log shows them. Directions carry their reference: "146°T", "150°M" in
    // the window, "146T", "150M" on a terminal.
    std::string From() const;                                          // start name, else ident
    std::string To() const;                                            // end name, else ident
    std::string Altitude() const;                                      // feet
    std::string Wind(LogStyle style = LogStyle::kWindow) const;        // "116°T/18kt", "116T/18"
    std::string Tas() const;                                           // kt
    std::string TrueCourse(LogStyle style = LogStyle::kWindow) const;  // "146°T"
    std::string MagHeading(LogStyle style = LogStyle::kWindow) const;  // "150°M"
    std::string Distance() const;                                      // "%.1f" nm
    // kt; "GS ≤ 0" ("GS <= 0" on a terminal) when the sector cannot be flown.
    std::string GroundSpeed(LogStyle style = LogStyle::kWindow) const;
    std::string Time() const;  // "h:mm"; "--:--" when it cannot be flown
    std::string Fuel() const;  // "%.1f"; "---" when it cannot be flown
};

struct FlightLog {
    std::vector<FlightLogRow> rows;
    double totalDistance = 0.0;  // nm
    double totalTime = 0.0;      // minutes
    double totalFuel = 0.0;      // the aircraft's fuel unit

    // False when any sector cannot be flown: then the time and fuel totals are dashes too.
    bool Flyable() const;
    std::string TotalDistance() const;  // "%.1f"
    std::string TotalTime() const;      // "h:mm" or "--:--"
    std::string TotalFuel() const;      // "%.1f" or "---"
};

inline constexpr std::string_view kNoTime = "--:--";
inline constexpr std::string_view kNoFuel = "---";

// Reads the active plan; an empty log when it has no sectors or cannot be opened. The sector
// being flown is marked only while a feed runs.
FlightLog BuildFlightLog(const SettingsState& settings, const PlanState& plan, const LegState& leg);

// Minutes as "h:mm" (rounded to the minute); "--:--" for a time that is not finite.
std::string FormatLogTime(double minutes);

// The log as a text table with a header, a line of units (fuelUnit: "Usgal", or empty) and a
// totals line, for a terminal.
std::string FlightLogTable(const FlightLog& log, std::string_view fuelUnit = {});

}  // namespace aerix
