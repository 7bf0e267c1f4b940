// Writing parsed waypoints into a navigation database, leaving out those already there.
#include "store/waypoint_import.hpp"

#include <unordered_set>

#include "platform/message_box.hpp"
#include "platform/prop_codec.hpp"
#include "platform/services.hpp"
#include "store/nav_volume_scope.hpp"
#include "store/record_props.hpp"
#include "store/record_store.hpp"

namespace aerix {

namespace {

std::string RecordKey(const WaypointRecord& r) {
    std::vector<std::uint8_t> blob;
    platform::EncodeProps(ToProps(r), blob);
    return std::string(blob.begin(), blob.end());
}

}  // namespace

WaypointImportResult ImportWaypoints(NavDataState& nav, std::u16string_view databaseName,
                                     std::span<const WaypointRecord> records) {
    NavVolumeScope volume(nav, databaseName);
    if (!volume.Mounted())
        return {};
    return ImportWaypointsIntoMountedVolume(nav, databaseName, records);
}

WaypointImportResult ImportWaypointsIntoMountedVolume(const NavDataState& nav,
                                                      std::u16string_view databaseName,
                                                      std::span<const WaypointRecord> records) {
    WaypointImportResult result;
    // A database that is not there yet is made, not reported.
    DbHandle h =
        platform::Sys().store->OpenDatabase(platform::VolumeGuid{nav.NavVolumeGuid}, databaseName,
                                            schema::kWptName, platform::kOpenAutoIncrement);
    if (!h) {
        if (CreateNavDatabase(nav, databaseName) == 0) {
            platform::ShowError("Could not create Nav database");
            return result;
        }
        h = OpenNavDatabase(nav, databaseName, schema::kWptName);
        if (!h)
            return result;
    }
    std::unordered_set<std::string> present;
    ReadEach(h, ReadWaypoint,
             [&](const WaypointRecord& w, CeOid) { present.insert(RecordKey(w)); });
    // One transaction for the whole import: fast, and a failure keeps the database as it was.
    h.BeginBatch();
    for (const WaypointRecord& r : records) {
        if (!present.insert(RecordKey(r)).second) {
            ++result.duplicates;
            continue;
        }
        if (WriteWaypoint(h, r) == 0) {
            result.added = 0;
            return result;  // said "Record write failed"; closing the handle drops the batch
        }
        ++result.added;
    }
    if (!h.CommitBatch()) {
        platform::ShowError("Record write failed");
        result.added = 0;
        return result;
    }
    result.ok = true;
    return result;
}

}  // namespace aerix
