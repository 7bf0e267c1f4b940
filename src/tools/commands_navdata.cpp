// airspace load, import airspace, import waypoints, navdb load, navdb search: the airspace overlay
// and the navigation databases from the command line.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "app/app_state.hpp"
#include "platform/registry.hpp"
#include "platform/text.hpp"
#include "settings/settings.hpp"
#include "store/airspace_loader.hpp"
#include "store/nav_database_dialogs.hpp"
#include "store/nav_database_loader.hpp"
#include "store/openair_import.hpp"
#include "store/record_store.hpp"
#include "store/waypoint_import.hpp"
#include "tools/tool_context.hpp"

namespace aerix::tools {

namespace fs = std::filesystem;

namespace {

std::string ReadWhole(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw ToolFailure("cannot read " + path.string());
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

void AddAirspaceLoad(CLI::App& app, ToolContext& ctx) {
    auto* group = app.add_subcommand("airspace", "The airspace overlay");
    group->require_subcommand(1);
    auto* load = group->add_subcommand("load", "Load the airspace file as the instrument views do");
    auto file = std::make_shared<std::string>();
    load->add_option("FILE", *file, "Airspace file (default: the data root's EuroAip.txt)");
    load->callback([&ctx, file] {
        auto& platform = ctx.OpenPlatform();
        g_app.nav.AirspaceEntryCount = 0;
        if (file->empty()) {
            LoadAirspace(g_app.nav);
        } else {
            LoadAirspaceFrom(g_app.nav, *file);
        }
        if (!ctx.Ui().Boxes().empty())
            throw ToolFailure("the airspace file could not be loaded");
        (void)platform;
        ctx.Out().Emit({{"count", g_app.nav.AirspaceEntryCount}});
    });
}

void AddImportAirspace(CLI::App* import, ToolContext& ctx) {
    auto* cmd =
        import->add_subcommand("airspace", "Convert an OpenAir file into the airspace file");
    auto file = std::make_shared<std::string>();
    auto out = std::make_shared<std::string>();
    cmd->add_option("FILE", *file, "OpenAir text file")->required()->check(CLI::ExistingFile);
    cmd->add_option("--out", *out, "Where to write (default: the data root's EuroAip.txt)");
    cmd->callback([&ctx, file, out] {
        fs::path target = out->empty() ? ctx.OpenPlatform().Root().ResolveForWrite(kAirspaceFile)
                                       : fs::path(*out);
        OpenAirImport imported = ImportOpenAir(*file, target);
        for (const auto& p : imported.conversion.problems) {
            std::cerr << *file << ":" << p.line << ": skipped: " << p.message << '\n';
        }
        if (!imported.ok)
            throw ToolFailure(imported.error);
        Json result{{"outlines", imported.conversion.outlines},
                    {"lines", imported.conversion.lines},
                    {"skipped", imported.conversion.problems.size()},
                    {"file", target.string()}};
        if (!imported.backup.empty())
            result["backup"] = imported.backup.string();
        ctx.Out().Emit(result);
    });
}

const char* FormatName(WaypointFormat format) {
    switch (format) {
        case WaypointFormat::kCup:
            return "cup";
        case WaypointFormat::kAirports:
            return "airports.csv";
        case WaypointFormat::kNavaids:
            return "navaids.csv";
        default:
            return "unknown";
    }
}

void AddImportWaypoints(CLI::App* import, ToolContext& ctx) {
    auto* cmd = import->add_subcommand(
        "waypoints", "Add the waypoints of a SeeYou .cup, airports.csv or navaids.csv file");
    auto file = std::make_shared<std::string>();
    auto db = std::make_shared<std::string>();
    cmd->add_option("FILE", *file, "Waypoint file")->required()->check(CLI::ExistingFile);
    cmd->add_option("--db", *db, "Navigation database (created when missing)")->required();
    cmd->callback([&ctx, file, db] {
        std::u16string name = Utf8ToUtf16(*db);
        if (name.empty() || name.size() > 32 ||
            name.find_first_of(u"\\/:*?\"<>|") != std::u16string::npos)
            throw ToolFailure("--db: a database name of 1 to 32 characters, usable as a file name");
        auto parsed = ParseWaypointFile(ReadWhole(*file), fs::path(*file).filename().string());
        for (const auto& p : parsed.problems)
            std::cerr << *file << ":" << p.line << ": skipped: " << p.message << '\n';
        if (parsed.format == WaypointFormat::kUnknown)
            throw ToolFailure(*file + ": not a waypoint file this tool reads");
        ctx.OpenPlatform();
        auto result = ImportWaypoints(g_app.nav, name, parsed.records);
        if (!result.ok)
            throw ToolFailure("the waypoints could not be written; the database is unchanged");
        ctx.Out().Emit({{"format", FormatName(parsed.format)},
                        {"database", *db},
                        {"added", result.added},
                        {"duplicates", result.duplicates},
                        {"skipped", parsed.problems.size()},
                        {"ignored", parsed.ignored}});
    });
}

// The active navigation database: --db, else the one the settings name (read quietly).
void ChooseDatabase(ToolContext& ctx, const std::string& db) {
    ctx.OpenPlatform();
    if (!db.empty()) {
        g_app.settings.NavDatabaseName.assign(Utf8ToUtf16(db));
        return;
    }
    auto& hive = *platform::Sys().registry;
    platform::HKEY key = 0;
    if (hive.OpenKey(platform::kHkeyLocalMachine, kSettingsKey, &key) == platform::kErrorSuccess) {
        char16_t text[90] = {};
        std::uint32_t size = sizeof text - sizeof(char16_t);
        if (hive.QueryValue(key, u"CuDbase", nullptr, text, &size) == platform::kErrorSuccess)
            g_app.settings.NavDatabaseName.assign(text);
        hive.CloseKey(key);
    }
    if (g_app.settings.NavDatabaseName.empty())
        throw ToolFailure("no navigation database chosen: give --db NAME");
}

Json EntryJson(std::u16string_view name, std::u16string_view ident, std::int32_t latitude,
               std::int32_t longitude, int type) {
    return Json{{"name", Utf16ToUtf8(name)},
                {"ident", Utf16ToUtf8(ident)},
                {"latitude", latitude / 6000.0},
                {"longitude", longitude / 6000.0},
                {"type", type},
                {"typeName", std::string(WaypointTypeName(type))}};
}

void AddNavDb(CLI::App& app, ToolContext& ctx) {
    auto* group = app.add_subcommand("navdb", "The navigation databases");
    group->require_subcommand(1);

    auto* load = group->add_subcommand(
        "load", "Load the navigation database as the instrument views do (whole-world area)");
    auto loadDb = std::make_shared<std::string>();
    auto list = std::make_shared<bool>(false);
    load->add_option("--db", *loadDb, "Database name (default: the chosen one, CuDbase)");
    load->add_flag("--list", *list, "Also print every waypoint kept");
    load->callback([&ctx, loadDb, list] {
        ChooseDatabase(ctx, *loadDb);
        LoadNavDatabase(g_app.settings, g_app.nav);
        if (!ctx.Ui().Boxes().empty())
            throw ToolFailure("the navigation database could not be loaded");
        ctx.Out().Emit({{"count", g_app.nav.NavEntryCount}});
        if (*list) {
            for (const NavEntry& e : g_app.nav.NavDatabase) {
                Json j = EntryJson(e.name.view(), e.ident.view(), e.latitude, e.longitude, e.type);
                j["extra"] = e.extra.utf8();
                ctx.Out().Emit(j);
            }
        }
    });

    auto* search = group->add_subcommand(
        "search",
        "Waypoints whose name (or ident, with --icao) contains TEXT, letter case counting");
    auto text = std::make_shared<std::string>();
    auto icao = std::make_shared<bool>(false);
    auto searchDb = std::make_shared<std::string>();
    search->add_option("TEXT", *text, "Text to look for")->required();
    search->add_flag("--icao", *icao, "Search the idents instead of the names");
    search->add_option("--db", *searchDb, "Database name (default: the chosen one, CuDbase)");
    search->callback([&ctx, text, icao, searchDb] {
        ChooseDatabase(ctx, *searchDb);
        g_app.nav.NavSearchKey = *icao ? schema::kWptIdent : schema::kWptName;
        std::vector<Json> found;
        {
            MountNavVolume(g_app.settings, g_app.nav);
            DbHandle h = OpenNavDatabase(g_app.nav, g_app.settings.NavDatabaseName.view(),
                                         g_app.nav.NavSearchKey);
            std::u16string needle = Utf8ToUtf16(*text), key;
            int match;
            while (h && (match = ReadNavSearch(g_app.nav, h, needle, key)) >= 0) {
                if (match == 0)
                    continue;
                // The search read gives the key; the record itself comes from a second read.
                WaypointRecord w;
                ReadWaypoint(h, kFromCurrent, static_cast<std::uint32_t>(-1), w);
                found.push_back(
                    EntryJson(w.Name, w.Ident, w.Latitude, w.Longitude, w.WaypointType));
            }
            h.Close();
            UnmountNavVolume(g_app.nav);
        }
        if (!ctx.Ui().Boxes().empty())
            throw ToolFailure("the navigation database could not be searched");
        ctx.Out().Emit({{"count", found.size()}});
        for (const Json& j : found)
            ctx.Out().Emit(j);
    });
}

}  // namespace

void AddNavDataCommands(CLI::App& app, ToolContext& ctx) {
    AddAirspaceLoad(app, ctx);
    AddNavDb(app, ctx);
    auto* import = app.add_subcommand("import", "Import today's data formats");
    import->require_subcommand(1);
    AddImportAirspace(import, ctx);
    AddImportWaypoints(import, ctx);
}

}  // namespace aerix::tools
