// Finding a sector's ends in the current navigation database: by name, or by ICAO identifier when
// settings.IcaoSearch is set. The match is a case-sensitive substring, as the record store's search
// read does it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/settings_state.hpp"
#include "store/nav_data_state.hpp"
#include "store/records.hpp"

namespace aerix {

// One end of a sector: what 401/403 or 402/404 carry, and the position in CentiMinutes.
struct SectorEnd {
    std::u16string name;
    std::u16string ident;
    std::int32_t latitude = 0;
    std::int32_t longitude = 0;
};

// The matching waypoints in the order of the searched key (left in nav.NavSearchKey). Mounts the
// nav volume of settings.NavDatabaseName for the search and unmounts it after; with no database
// chosen says "Choose a navigation database first" and finds nothing.
std::vector<WaypointRecord> SearchWaypoints(const SettingsState& settings, NavDataState& nav,
                                            std::u16string_view text);

SectorEnd SectorEndOf(const WaypointRecord& waypoint);

// A position typed as "LAT,LON" in decimal degrees (north and east positive), named by its
// position text. Nothing when the text is not two numbers on the globe.
std::optional<SectorEnd> SectorEndAt(std::string_view text);

}  // namespace aerix
