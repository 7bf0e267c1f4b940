// The flight log the PLAN view draws: one row per sector of the active plan and the totals, with
// the sector being flown and the highlighted one marked.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "store/records.hpp"

namespace aerix {

struct FlightLogRow {
    std::uint32_t oid = 0;
    SectorRecord sector;
    bool active = false;       // the sector being flown while a feed runs
    bool highlighted = false;  // the one the sector commands act on (g_app.HighlightedSector)

    // The columns as the log shows them.
    std::string From() const;         // start name, else its ident
    std::string To() const;           // end name, else its ident
    std::string Altitude() const;     // feet
    std::string Wind() const;         // "ddd/ss"
    std::string Tas() const;          // kt
    std::string TrueCourse() const;   // "%03.0f"
    std::string MagHeading() const;   // "%03.0f"
    std::string Distance() const;     // "%.1f" nm
    std::string GroundSpeed() const;  // kt
    std::string Time() const;         // "h:mm", "--:--" when it cannot be flown
    std::string Fuel() const;         // "%.1f"
};

struct FlightLog {
    std::vector<FlightLogRow> rows;
    double totalDistance = 0.0;  // nm
    double totalTime = 0.0;      // minutes
    double totalFuel = 0.0;      // the aircraft's fuel unit
};

// Reads the active plan; an empty log when it has no sectors or cannot be opened.
FlightLog BuildFlightLog();

// Minutes as "h:mm" (rounded to the minute); "--:--" for a time that is not finite.
std::string FormatLogTime(double minutes);

// The log as a text table with a header and a totals line, for a terminal.
std::string FlightLogTable(const FlightLog& log);

}  // namespace aerix
