// 500,000 waypoints written one by one into a navigation volume through the record store, then
// read back in name order through the store, beside a plain SQLite SELECT of the same rows.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "app/app_state.hpp"
#include "platform/scripted_ui.hpp"
#include "platform/services.hpp"
#include "store/record_store.hpp"

namespace {

using namespace aerix;

// AERIX_BENCH_WAYPOINTS sets another count for a quick run.
const int kWaypoints = [] {
    const char* n = std::getenv("AERIX_BENCH_WAYPOINTS");
    return n ? std::atoi(n) : 500000;
}();

struct Bench {
    std::filesystem::path dir;
    platform::ScriptedUi ui;
    std::unique_ptr<platform::Platform> platform;
    std::filesystem::path volumeFile;
    CeOid database = 0;

    Bench() {
        char pattern[] = "/tmp/aerix-bench-XXXXXX";
        dir = ::mkdtemp(pattern);
        platform = std::make_unique<platform::Platform>(dir, ui);
        g_app.settings.NavDatabaseName.assign(u"Bench");
        volumeFile =
            platform->Root().ResolveForWrite(NavVolumePath(g_app.settings.NavDatabaseName.view()));
    }
    ~Bench() {
        UnmountNavVolume(g_app.nav);
        platform.reset();
        std::filesystem::remove_all(dir);
    }
};

Bench& State() {
    static Bench bench;
    return bench;
}

WaypointRecord Waypoint(std::uint32_t key) {
    char name[40];
    std::snprintf(name, sizeof name, "WAYPOINT %06u", key);
    char ident[8];
    std::snprintf(ident, sizeof ident, "W%04u", key % 10000);
    WaypointRecord w;
    w.Name = Utf8ToUtf16(name);
    w.Ident = Utf8ToUtf16(ident);
    w.Latitude = static_cast<std::int32_t>(key % 540000) - 270000;
    w.Longitude = static_cast<std::int32_t>(key * 7 % 1080000) - 540000;
    w.Value104 = key * 0.25;
    w.WaypointType = static_cast<std::int16_t>(key % 9 + 1);
    w.Text106 = u"ELEV 320";
    w.Number107 = 3;
    w.ExtraText = u"118.450 MHz";
    return w;
}

void BM_WriteWaypoints(benchmark::State& state) {
    Bench& b = State();
    std::vector<std::uint32_t> keys(kWaypoints);
    for (int i = 0; i < kWaypoints; ++i)
        keys[static_cast<std::size_t>(i)] = static_cast<std::uint32_t>(i);
    std::shuffle(keys.begin(), keys.end(), std::mt19937(42));  // a data set in no order
    for (auto _ : state) {
        state.PauseTiming();
        std::filesystem::remove(b.volumeFile);
        MountNavVolume(g_app.settings, g_app.nav);
        b.database = CreateNavDatabase(g_app.nav, u"Bench");
        DbHandle h = OpenNavDatabase(g_app.nav, u"Bench", schema::kWptName);
        std::vector<WaypointRecord> rows;
        rows.reserve(keys.size());
        for (std::uint32_t k : keys)
            rows.push_back(Waypoint(k));
        state.ResumeTiming();
        for (const WaypointRecord& w : rows)
            if (WriteWaypoint(h, w) == 0)
                state.SkipWithError("write failed");
    }
    state.counters["records"] = kWaypoints;
}

void BM_StoreReadAllInNameOrder(benchmark::State& state) {
    std::size_t n = 0;
    for (auto _ : state) {
        DbHandle h = OpenNavDatabase(g_app.nav, u"Bench", schema::kWptName);
        WaypointRecord w;
        n = 0;
        while (ReadWaypoint(h, kFromCurrent, 0, w))
            ++n;
    }
    if (n != static_cast<std::size_t>(kWaypoints))
        state.SkipWithError("wrong count");
}

void BM_PlainSelectInNameOrder(benchmark::State& state) {
    Bench& b = State();
    UnmountNavVolume(g_app.nav);  // the store holds a mounted volume for itself
    sqlite3* db = nullptr;
    sqlite3_open_v2(b.volumeFile.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
    std::string sql =
        "SELECT oid, props FROM r" + std::to_string(b.database) + " ORDER BY m0, k0, oid";
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v2(db, sql.c_str(), -1, &stmt, nullptr);
    std::size_t n = 0;
    for (auto _ : state) {
        n = 0;
        std::size_t bytes = 0;
        while (sqlite3_step(stmt) == SQLITE_ROW) {
            benchmark::DoNotOptimize(sqlite3_column_int64(stmt, 0));
            benchmark::DoNotOptimize(sqlite3_column_blob(stmt, 1));
            bytes += static_cast<std::size_t>(sqlite3_column_bytes(stmt, 1));
            ++n;
        }
        sqlite3_reset(stmt);
        benchmark::DoNotOptimize(bytes);
    }
    sqlite3_finalize(stmt);
    sqlite3_close(db);
    if (n != static_cast<std::size_t>(kWaypoints))
        state.SkipWithError("wrong count");
}

BENCHMARK(BM_WriteWaypoints)->Iterations(1)->Unit(benchmark::kSecond)->UseRealTime();
BENCHMARK(BM_StoreReadAllInNameOrder)->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PlainSelectInNameOrder)->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
