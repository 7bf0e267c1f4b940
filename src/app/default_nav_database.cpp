#include "app/default_nav_database.hpp"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/app_state.hpp"
#include "platform/data_root.hpp"
#include "platform/disk_space.hpp"
#include "platform/numbered_backup.hpp"
#include "platform/services.hpp"
#include "platform/volume_file.hpp"
#include "store/nav_volume_scope.hpp"
#include "store/record_store.hpp"
#include "store/waypoint_import.hpp"

namespace aerix {

namespace fs = std::filesystem;

namespace {

constexpr const char* kVolumeSuffixes[] = {"", "-wal", "-shm", "-journal"};

void RemoveVolumeFiles(const fs::path& file) {
    std::error_code ec;
    for (const char* suffix : kVolumeSuffixes)
        fs::remove(file.string() + suffix, ec);
}

// A damaged volume may still hold a pilot's own waypoints: it is moved aside with its log, never
// deleted.
bool MoveAside(const fs::path& file) {
    fs::path backup = platform::NextBackupName(file);
    std::error_code ec;
    fs::rename(file, backup, ec);
    if (ec)
        return false;
    fs::rename(file.string() + "-wal", backup.string() + "-wal", ec);
    fs::remove(file.string() + "-shm", ec);
    return true;
}

DefaultNavBuild Failed(const fs::path& partial, std::string problem, bool diskFull) {
    // Asked before the partial files give their room back.
    diskFull = diskFull || platform::NoRoomLeft(partial.parent_path());
    RemoveVolumeFiles(partial);
    DefaultNavBuild result;
    result.problem = "Could not build the navigation database World: " +
                     (diskFull ? std::string("disk full") : problem);
    result.diskFull = diskFull;
    return result;
}

}  // namespace

DefaultNavBuild CreateDefaultNavDatabase() {
    const platform::DataRoot& root = *platform::Sys().root;
    fs::path volume = root.Resolve(NavVolumePath(kDefaultNavDatabaseName));
    switch (platform::CheckVolumeFile(volume, kDefaultNavDatabaseName)) {
        case platform::VolumeFileState::kMissing:
            break;
        case platform::VolumeFileState::kDamaged:
            if (!MoveAside(volume))
                return {0, "Could not move the damaged " + volume.string() + " aside", false};
            break;
        default:
            return {};
    }
    std::ifstream in(platform::ResourcePath("airports/airports.csv"), std::ios::binary);
    if (!in)
        return {};
    std::stringstream text;
    text << in.rdbuf();
    WaypointParse parsed = ParseWaypointFile(text.str(), "airports.csv");
    if (parsed.records.empty())
        return {};

    volume = root.ResolveForWrite(NavVolumePath(kDefaultNavDatabaseName));
    fs::path partial = volume.string() + ".part";
    RemoveVolumeFiles(partial);
    WaypointImportResult result;
    {
        NavVolumeScope scope(g_app.nav, NavVolumeScope::AtFile{partial});
        if (!scope.Mounted())
            return Failed(partial, "the volume could not be created", false);
        result =
            ImportWaypointsIntoMountedVolume(g_app.nav, kDefaultNavDatabaseName, parsed.records);
    }
    if (!result.ok)
        return Failed(partial, "the waypoints could not be written", false);
    bool diskFull = false;
    if (!platform::SealVolumeFile(partial, &diskFull))
        return Failed(partial, "the volume could not be completed", diskFull);
    std::error_code ec;
    fs::rename(partial, volume, ec);
    if (ec)
        return Failed(partial, ec.message(), false);
    platform::SyncFolder(volume.parent_path());
    DefaultNavBuild built;
    built.added = result.added;
    return built;
}

}  // namespace aerix
