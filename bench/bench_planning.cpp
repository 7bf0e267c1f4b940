// Recomputing the route of a long plan: every sector read, its wind looked up, computed and
// written back, as after each sector edit.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <random>

#include <unistd.h>

#include "app/app_state.hpp"
#include "app/default_data.hpp"
#include "planning/sector_computation.hpp"
#include "platform/scripted_ui.hpp"
#include "platform/services.hpp"
#include "store/record_store.hpp"

namespace {

using namespace aerix;

void BM_RecomputePlanRoute(benchmark::State& state) {
    auto root = std::filesystem::temp_directory_path() /
                ("aerix-bench-planning-" + std::to_string(::getpid()));
    std::filesystem::remove_all(root);
    {
        platform::ScriptedUi ui;
        platform::Platform platform(root, ui);
        ResetAppState();
        g_app.settings.AircraftReg.assign(u"G-CESS");
        CreateDefaultData();
        CreatePlanDatabase(u"Long");
        g_app.settings.ActivePlanName.assign(u"Long");
        {
            DbHandle h = OpenDatabase(u"Long", schema::kSecNumber);
            std::mt19937 rng(7);
            std::uniform_int_distribution<std::int32_t> step(-3000, 3000);
            std::int32_t lat = 50 * 6000, lon = 0;
            for (int i = 0; i < state.range(0); ++i) {
                SectorRecord s;
                s.SectorNumber = static_cast<std::int16_t>(i + 1);
                s.StartLatitude = lat;
                s.StartLongitude = lon;
                lat += step(rng);
                lon += step(rng);
                s.EndLatitude = lat;
                s.EndLongitude = lon;
                s.Phase = static_cast<std::int16_t>(1 + i % 3);
                s.AltitudeText = std::u16string(u"") + (i % 2 ? u"3500" : u"7000");
                s.TrueAirspeed = 100;
                WriteSector(h, s, 0);
            }
        }
        for (auto _ : state)
            RecomputePlanRoute(g_app.settings, g_app.plan, 0);
        state.SetItemsProcessed(state.iterations() * state.range(0));
        if (!ui.Boxes().empty())
            state.SkipWithError(ui.Boxes().front().text.c_str());
    }
    std::filesystem::remove_all(root);
}
BENCHMARK(BM_RecomputePlanRoute)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
