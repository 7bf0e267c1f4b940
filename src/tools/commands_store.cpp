// init, db list, db dump: the first start without a screen, and a look into the databases.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>

#include "app/app_state.hpp"
#include "app/default_data.hpp"
#include "app/start_up.hpp"
#include "platform/disk_space.hpp"
#include "platform/object_store.hpp"
#include "platform/text.hpp"
#include "qt/graphics/headless.hpp"
#include "settings/settings.hpp"
#include "store/record_store.hpp"
#include "tools/tool_context.hpp"
#include "views/chart_generator.hpp"

namespace aerix::tools {

namespace {

using platform::DatabaseInfo;
using platform::PropVal;
using platform::VolumeGuid;

std::string StoreErrorText(platform::StoreError e) {
    switch (e) {
        case platform::StoreError::kInvalidFile:
            return "not a valid database file (left untouched)";
        case platform::StoreError::kNotFound:
            return "not found";
        case platform::StoreError::kAlreadyExists:
            return "already exists";
        case platform::StoreError::kInvalidParameter:
            return "invalid request";
        case platform::StoreError::kIo:
            return "the database refused the operation";
        case platform::StoreError::kLocked:
            return "The data is locked by another program";
        case platform::StoreError::kFull:
            return "disk full";
        case platform::StoreError::kReadOnly:
            return kDataReadOnlyText;
        default:
            return "failed";
    }
}

// The object store, or the volume file given with --volume, mounted for the command's lifetime.
class VolumeScope {
  public:
    VolumeScope(ToolContext& ctx, const std::string& volumePath)
        : store_(&ctx.OpenPlatform().Store()) {
        if (volumePath.empty()) {
            // Touching the store opens it; a damaged file is reported, never replaced.
            store_->EnumDatabases(platform::kObjectStoreVolume);
            if (platform::LastStoreError() != platform::StoreError::kNone)
                throw ToolFailure(store_->StoreFile().string() + ": " +
                                  StoreErrorText(platform::LastStoreError()));
            return;
        }
        // A listing never creates a volume file.
        if (!store_->MountVolume(volumePath, platform::kOpenExisting, guid_))
            throw ToolFailure(volumePath + ": " + StoreErrorText(platform::LastStoreError()));
        mounted_ = true;
    }
    ~VolumeScope() {
        if (mounted_)
            store_->UnmountVolume(guid_);
    }
    platform::ObjectStore& Store() { return *store_; }
    VolumeGuid Guid() const { return guid_; }

  private:
    platform::ObjectStore* store_;
    VolumeGuid guid_{};
    bool mounted_ = false;
};

Json ValueJson(const platform::PropValue& value) {
    return std::visit(
        [](const auto& v) -> Json {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, std::u16string>) {
                return Utf16ToUtf8(v);
            } else if constexpr (std::is_same_v<T, std::vector<std::uint8_t>>) {
                std::string hex;
                char byte[3];
                for (std::uint8_t b : v) {
                    std::snprintf(byte, sizeof byte, "%02x", b);
                    hex += byte;
                }
                return hex;
            } else {
                return v;
            }
        },
        value);
}

void AddInit(CLI::App& app, ToolContext& ctx) {
    auto* cmd = app.add_subcommand(
        "init", "First start without a screen: default settings, settings load, default data");
    cmd->callback([&ctx] {
        ctx.OpenPlatform();
        DefaultNavBuild world = StartUp(g_app);
        ChartGeneration charts;
        {
            // After the platform, which installs a fresh set of services.
            qt::HeadlessGraphics headless;
            charts = GenerateMissingCharts(DefaultMaps());
        }
        auto boxes = ctx.Ui().Boxes().size();
        if (boxes != 0) {
            // What was built stays; what was not is built again by the next start.
            bool full = world.diskFull || charts.diskFull ||
                        platform::NoRoomLeft(ctx.OpenPlatform().Root().Root());
            throw ToolFailure(full ? "init failed: disk full"
                                   : "init finished with " + std::to_string(boxes) + " message(s)");
        }
        ctx.Out().Emit({{"initialised", ctx.OpenPlatform().Root().Root().string()}});
    });
}

void AddDb(CLI::App& app, ToolContext& ctx) {
    auto* db = app.add_subcommand("db", "The property databases of the object store or a volume");
    db->require_subcommand(1);

    auto* list = db->add_subcommand("list", "Name, type, record count and id of each database");
    auto listVolume = std::make_shared<std::string>();
    list->add_option("--volume", *listVolume, "A volume file (e.g. a navigation .CDB) instead");
    list->callback([&ctx, listVolume] {
        VolumeScope scope(ctx, *listVolume);
        for (const DatabaseInfo& info : scope.Store().EnumDatabases(scope.Guid())) {
            ctx.Out().Emit({{"name", Utf16ToUtf8(info.name)},
                            {"type", info.type},
                            {"records", info.recordCount},
                            {"oid", info.oid}});
        }
    });

    auto* dump = db->add_subcommand(
        "dump", "Every record of a database as JSON Lines, in its first sort order");
    auto name = std::make_shared<std::string>();
    auto dumpVolume = std::make_shared<std::string>();
    dump->add_option("NAME", *name, "Database name")->required();
    dump->add_option("--volume", *dumpVolume, "A volume file (e.g. a navigation .CDB) instead");
    dump->callback([&ctx, name, dumpVolume] {
        VolumeScope scope(ctx, *dumpVolume);
        auto& store = scope.Store();
        std::u16string wide = Utf8ToUtf16(*name);
        auto probe = store.OpenDatabase(scope.Guid(), wide, 0, 0);
        if (!probe)
            throw ToolFailure("no database named \"" + *name + "\"");
        auto info = store.OidGetInfo(scope.Guid(), probe.DatabaseOid());
        probe.Close();
        std::uint32_t sort = info && !info->sorts.empty() ? info->sorts.front().propId : 0;
        auto h = store.OpenDatabase(scope.Guid(), wide, sort, platform::kOpenAutoIncrement);
        if (!h)
            throw ToolFailure("could not open \"" + *name + "\"");
        // One line a record, spaced as the other commands print JSON, each double in the
        // shortest form that reads back to it.
        std::vector<PropVal> props;
        while (platform::CeOid oid = h.Read(props)) {
            std::string line = "{\"oid\": " + std::to_string(oid) + ", \"props\": {";
            for (std::size_t i = 0; i < props.size(); ++i) {
                if (i)
                    line += ", ";
                line += Json(std::to_string(platform::PropNumber(props[i].propId))).dump();
                line += ": ";
                line +=
                    ValueJson(props[i].value).dump(-1, ' ', false, Json::error_handler_t::replace);
            }
            std::cout << line << "}}\n";
        }
    });
}

}  // namespace

void AddStoreCommands(CLI::App& app, ToolContext& ctx) {
    AddInit(app, ctx);
    AddDb(app, ctx);
}

}  // namespace aerix::tools
