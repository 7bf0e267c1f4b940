// Loading the navigation database (500,000 waypoints, a quarter of them in the area) and the
// airspace file (28,030 lines) into memory, as the instrument views do before they first draw.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "app/app_state.hpp"
#include "platform/scripted_ui.hpp"
#include "platform/services.hpp"
#include "store/airspace_loader.hpp"
#include "store/field_splitter.hpp"
#include "store/nav_database_loader.hpp"
#include "store/nav_volume_scope.hpp"
#include "store/record_store.hpp"

namespace {

namespace fs = std::filesystem;
using namespace aerix;

constexpr int kWaypoints = 500000;
constexpr int kAirspaceLines = 28030;

// A data root in a temporary folder holding both data sets, made once per run.
class BenchData {
  public:
    BenchData() {
        char pattern[] = "/tmp/aerix-bench-XXXXXX";
        root_ = ::mkdtemp(pattern);
        platform_ = std::make_unique<platform::Platform>(root_, ui_);
        WriteWaypoints();
        WriteAirspace();
    }
    ~BenchData() {
        platform_.reset();
        std::error_code ec;
        fs::remove_all(root_, ec);
    }
    static BenchData& Get() {
        static BenchData data;
        return data;
    }
    // The area: 50N..60N, 10W..10E; every fourth waypoint lies inside.
    static void SetArea() {
        g_app.nav.AreaSouth = 50 * 6000;
        g_app.nav.AreaNorth = 60 * 6000;
        g_app.nav.AreaWest = -10 * 6000;
        g_app.nav.AreaEast = 10 * 6000;
    }

  private:
    void WriteWaypoints() {
        g_app.settings.NavDatabaseName.assign(u"Bench");
        NavVolumeScope volume(g_app.nav, u"Bench");
        CreateNavDatabase(g_app.nav, u"Bench");
        DbHandle h = OpenNavDatabase(g_app.nav, u"Bench", schema::kWptName);
        h.BeginBatch();
        WaypointRecord r;
        r.WaypointType = 1;
        r.ExtraText = u"GB";
        r.FurtherTexts[kWptSource] = u"bench";
        for (int i = 0; i < kWaypoints; ++i) {
            // Names in an order unrelated to the positions.
            unsigned scrambled = (static_cast<unsigned>(i) * 2654435761u) % 1000000u;
            char name[32];
            std::snprintf(name, sizeof name, "WPT %06u", scrambled);
            r.Name = BytesToUtf16(name);
            r.Ident = BytesToUtf16(std::string(name + 4, 5));
            bool inside = i % 4 == 0;
            r.Latitude = (inside ? 50 * 6000 : -50 * 6000) + (i % 60000);
            r.Longitude = -10 * 6000 + (i % 120000);
            WriteWaypoint(h, r);
        }
        h.CommitBatch();
    }
    void WriteAirspace() {
        std::ofstream out(platform_->Root().ResolveForWrite(kAirspaceFile), std::ios::binary);
        const char sep = kFieldSeparator;
        for (int i = 0; i < kAirspaceLines; ++i) {
            std::string keyword = i % 10 == 0 ? "EGTT" : "GLINETO";
            out << keyword << sep << 55 * 6000 + i % 1000 << sep << -5 * 6000 + i % 500 << sep
                << "1.5" << sep << "90" << sep << "180" << sep << "1" << sep << "\r\n";
        }
    }

    fs::path root_;
    platform::ScriptedUi ui_;
    std::unique_ptr<platform::Platform> platform_;
};

void BM_LoadNavDatabase(benchmark::State& state) {
    BenchData::Get();
    BenchData::SetArea();
    g_app.settings.NavDatabaseName.assign(u"Bench");
    for (auto _ : state) {
        LoadNavDatabase(g_app.settings, g_app.nav);
        benchmark::DoNotOptimize(g_app.nav.NavDatabase.data());
    }
    state.counters["kept"] = g_app.nav.NavEntryCount;
    if (g_app.nav.NavEntryCount != kWaypoints / 4)
        state.SkipWithError("unexpected count");
}
BENCHMARK(BM_LoadNavDatabase)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_LoadAirspace(benchmark::State& state) {
    BenchData::Get();
    BenchData::SetArea();
    for (auto _ : state) {
        LoadAirspace(g_app.nav);
        benchmark::DoNotOptimize(g_app.nav.AirspaceOverlay.data());
    }
    state.counters["kept"] = g_app.nav.AirspaceEntryCount;
    if (g_app.nav.AirspaceEntryCount != kAirspaceMaxEntries)
        state.SkipWithError("unexpected count");
}
BENCHMARK(BM_LoadAirspace)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
