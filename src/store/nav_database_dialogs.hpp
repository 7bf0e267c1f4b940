// The database management dialogs as toolkit-free models: "New" navigation database, "Add" and
// "Edit" waypoint with all 19 properties, "List view" with the waypoint search, and delete. The
// front end shows the fields and forwards the buttons; every message comes from here.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/prop_val.hpp"
#include "settings/settings_state.hpp"
#include "store/nav_data_state.hpp"
#include "store/records.hpp"

namespace aerix {

// The text shown for a waypoint type code (property 105); empty for codes outside 1-9.
std::string_view WaypointTypeName(int code);
inline constexpr int kWaypointTypeCodes = 9;

// "New": creates the volume "\My Documents\Aerix\<name>.CDB" holding an empty database of the
// same name, sorted by name and by ident, and makes it the active database so that waypoints can
// be added to it at once. False (after saying why) when the name is empty, too long (32
// characters), not usable as a file name, or already taken.
bool NewNavDatabase(SettingsState& settings, NavDataState& nav, std::string_view name);

// The Add/Edit form: every property as the user types it (UTF-8), the type as its code.
struct WaypointForm {
    std::string name;          // 100, required, at most 35 characters
    std::string ident;         // 101, at most 5
    std::string latitude;      // 102: "51.5", "-0.25", "N51 30.5", "51 30 30 N", "5130.500N"
    std::string longitude;     // 103: the same forms with E/W
    std::string elevation;     // 104, feet
    int type = 1;              // 105, 1-9 (the names above); 0 shows no type
    std::string frequency;     // 106
    std::string runwayLength;  // 107, metres, whole
    std::string region;        // 108, at most 23
    std::string municipality;  // 109
    std::string runway;        // 110
    std::string source;        // 111; a new waypoint without one is "user"
    std::array<std::string, 7> notes;  // 112-118
};

WaypointForm FormFromWaypoint(const WaypointRecord& r);
// Checks and converts the form; shows the first problem ("Invalid latitude", ...) and returns
// false.
bool WaypointFromForm(const WaypointForm& form, WaypointRecord& r);
// A latitude or longitude as the form takes it, in CentiMinutes; false when not readable or out
// of range.
bool ParsePositionText(std::string_view text, bool latitude, std::int32_t* centiMinutes);

// The active database's waypoints in name order, filtered by the waypoint search: the name (or,
// with the ICAO search, the ident: nav.NavSearchKey) must contain search, letter case counting.
struct NavListLine {
    std::uint32_t index = 0;  // position in name order, for delete
    platform::CeOid oid = 0;  // for edit
    std::string text;         // name, two blanks, ident
};
std::vector<NavListLine> ListNavDatabase(const SettingsState& settings, NavDataState& nav,
                                         std::string_view search);

// Add, edit and delete in the active database (settings.NavDatabaseName); each marks the
// in-memory arrays for reloading (nav.ArraysPending).
bool AddWaypoint(const SettingsState& settings, NavDataState& nav, const WaypointForm& form);
bool ReadWaypointForEdit(const SettingsState& settings, NavDataState& nav, platform::CeOid oid,
                         WaypointForm& form);
bool EditWaypoint(const SettingsState& settings, NavDataState& nav, platform::CeOid oid,
                  const WaypointForm& form);
// Asks "Delete waypoint - Are you sure?" first; deletes the index-th waypoint in name order.
bool DeleteWaypointAt(const SettingsState& settings, NavDataState& nav, std::uint32_t index);

}  // namespace aerix
