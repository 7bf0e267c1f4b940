#include "planning/waypoint_search.hpp"

#include <cmath>

#include "gps/position_text.hpp"
#include "platform/message_box.hpp"
#include "platform/numeric.hpp"
#include "store/record_store.hpp"
#include "utilities/entry_text.hpp"

namespace aerix {

std::vector<WaypointRecord> SearchWaypoints(const SettingsState& settings, NavDataState& nav,
                                            std::u16string_view text) {
    std::vector<WaypointRecord> found;
    if (settings.NavDatabaseName.empty()) {
        platform::ShowError("Choose a navigation database first");
        return found;
    }
    nav.NavSearchKey = settings.IcaoSearch ? schema::kWptIdent : schema::kWptName;
    MountNavVolume(settings, nav);
    {
        DbHandle h = OpenNavDatabase(nav, settings.NavDatabaseName.view(), nav.NavSearchKey);
        std::vector<std::uint32_t> hits;
        std::u16string scratch;
        for (std::uint32_t index = 0; h; ++index) {
            int match = ReadNavSearch(nav, h, text, scratch);
            if (match < 0)
                break;
            if (match == 1)
                hits.push_back(index);
        }
        for (std::uint32_t index : hits) {
            WaypointRecord w;
            if (ReadWaypoint(h, kByIndex, index, w) != 0)
                found.push_back(std::move(w));
        }
    }
    UnmountNavVolume(nav);
    return found;
}

SectorEnd SectorEndOf(const WaypointRecord& waypoint) {
    return {waypoint.Name, waypoint.Ident, waypoint.Latitude, waypoint.Longitude};
}

std::optional<SectorEnd> SectorEndAt(std::string_view text) {
    auto comma = text.find(',');
    if (comma == std::string_view::npos)
        return std::nullopt;
    auto lat = ParseDecimal(text.substr(0, comma));
    auto lon = ParseDecimal(text.substr(comma + 1));
    if (!lat || !lon || std::fabs(*lat) > 90.0 || std::fabs(*lon) > 180.0)
        return std::nullopt;
    SectorEnd end;
    end.latitude = TruncInt32(std::round(*lat * 6000.0));
    end.longitude = TruncInt32(std::round(*lon * 6000.0));
    end.name = PositionText(end.latitude, end.longitude);
    // The position text starts with two blanks for the status line; a name does not.
    while (!end.name.empty() && end.name.front() == u' ')
        end.name.erase(0, 1);
    return end;
}

}  // namespace aerix
