#include "app/default_nav_database.hpp"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/data_root.hpp"
#include "platform/services.hpp"
#include "store/nav_volume_scope.hpp"
#include "store/waypoint_import.hpp"

namespace aerix {

namespace fs = std::filesystem;

namespace {

void RemoveVolumeFiles(const fs::path& file) {
    std::error_code ec;
    for (const char* suffix : {"", "-wal", "-shm"})
        fs::remove(file.string() + suffix, ec);
}

}  // namespace

std::size_t CreateDefaultNavDatabase() {
    const platform::DataRoot& root = *platform::Sys().root;
    fs::path volume = root.Resolve(NavVolumePathOf(kDefaultNavDatabaseName));
    std::error_code ec;
    if (fs::exists(volume, ec))
        return 0;
    std::ifstream in(platform::ResourcePath("airports/airports.csv"), std::ios::binary);
    if (!in)
        return 0;
    std::stringstream text;
    text << in.rdbuf();
    WaypointParse parsed = ParseWaypointFile(text.str(), "airports.csv");
    if (parsed.records.empty())
        return 0;

    volume = root.ResolveForWrite(NavVolumePathOf(kDefaultNavDatabaseName));
    fs::path partial = volume.string() + ".part";
    RemoveVolumeFiles(partial);
    WaypointImportResult result;
    {
        NavVolumeScope scope(NavVolumeScope::AtFile{partial});
        if (!scope.Mounted())
            return 0;
        result = ImportWaypointsIntoMountedVolume(kDefaultNavDatabaseName, parsed.records);
    }
    if (!result.ok) {
        RemoveVolumeFiles(partial);
        return 0;
    }
    fs::rename(partial, volume, ec);
    if (ec) {
        RemoveVolumeFiles(partial);
        return 0;
    }
    return result.added;
}

}  // namespace aerix
