// The MAP view over a large chart: one paint of the 240 x 320 view with QPainter (the cost of
// every fix while flying), and the memory an 8000 x 8000 chart takes once loaded from its file
// (peak and resident growth of the load, against its 4-byte pixels).
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <filesystem>
#include <fstream>
#include <string>

#include "app/app_state.hpp"
#include "gps/position_text.hpp"
#include "qt/graphics/qt_graphics.hpp"
#include "support/test_platform.hpp"
#include "views/map_readouts.hpp"
#include "views/map_view.hpp"
#include "views/raster.hpp"

namespace {

using namespace aerix;

constexpr int kChartSide = 8000;

// A chart with structure on every row, so nothing is trivially uniform.
platform::Bitmap LargeChart() {
    platform::Bitmap chart(kChartSide, kChartSide);
    for (int y = 0; y < kChartSide; ++y) {
        std::uint32_t* row = chart.Row(y);
        for (int x = 0; x < kChartSide; ++x)
            row[x] = ((x * 7u) ^ (y * 13u)) & 0x00FFFFFFu;
    }
    return chart;
}

void BM_PaintMapView(benchmark::State& state) {
    testing::TestPlatform platform;
    qt::QtGraphics graphics;
    platform::Sys().graphics = &graphics;
    g_app.view.MapBitmap = LargeChart();
    g_app.view.MapLoaded = true;
    g_app.view.MapWidth = g_app.view.MapHeight = kChartSide;
    g_app.view.MapCenterX = g_app.view.MapCenterY = kChartSide / 2;
    g_app.view.MapZoom = static_cast<double>(state.range(0)) / 4.0;
    g_app.settings.ViewMode = kViewMap;
    g_app.settings.ShowLatLonMap = g_app.settings.ShowScaleMap = 1;
    g_app.gps.Fix.latitude = 50 * 6000.0;
    g_app.gps.Fix.trueTrack = 45;
    FormatPosition(g_app.gps.Fix);

    platform::Bitmap frame(240, 320);
    auto canvas = graphics.CanvasOn(frame);
    CanvasReadouts readouts(*canvas);
    for (auto _ : state) {
        PaintMapView(*canvas, &readouts, {g_app.view, g_app.settings, g_app.gps, g_app.leg}, 1);
        benchmark::DoNotOptimize(frame.Row(0));
    }
    canvas.reset();
    g_app.view.MapBitmap = platform::Bitmap();
    platform::Sys().graphics = nullptr;
}
// Zoom 1 (the usual scale) and 4 (the largest stretch).
BENCHMARK(BM_PaintMapView)
    ->Arg(4)
    ->Arg(16)
    ->Unit(benchmark::kMicrosecond)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);

long StatusKb(const char* field) {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind(field, 0) == 0)
            return std::stol(line.substr(std::string(field).size()));
    return -1;
}

// Resets the peak resident size, so that VmHWM afterwards is the load's own peak.
bool ResetPeak() {
    std::ofstream refs("/proc/self/clear_refs");
    refs << "5";
    return static_cast<bool>(refs.flush());
}

void BM_LoadChartMemory(benchmark::State& state) {
    auto file = std::filesystem::temp_directory_path() /
                ("aerix-bench-chart-" + std::to_string(state.range(0)) +
                 (state.range(0) ? ".png" : ".bmp"));
    if (!std::filesystem::exists(file)) {
        qt::QtGraphics graphics;
        platform::Bitmap chart = LargeChart();
        bool written = state.range(0) ? graphics.SaveImage(file.string(), chart)
                                      : WriteBmp(file.string(), chart);
        if (!written) {
            state.SkipWithError("could not write the chart");
            return;
        }
    }
    const double pixelBytes = 4.0 * kChartSide * kChartSide;
    qt::QtGraphics graphics;
    for (auto _ : state) {
        platform::Bitmap chart;
        std::string error;
        if (!ResetPeak()) {
            state.SkipWithError("cannot reset the peak resident size");
            return;
        }
        long before = StatusKb("VmRSS:");
        if (!graphics.LoadImage(file.string(), &chart, &error)) {
            state.SkipWithError(error.c_str());
            return;
        }
        long peak = StatusKb("VmHWM:");
        long after = StatusKb("VmRSS:");
        state.counters["peak_x_pixels"] = (peak - before) * 1024.0 / pixelBytes;
        state.counters["resident_x_pixels"] = (after - before) * 1024.0 / pixelBytes;
        state.counters["peak_MB"] = (peak - before) / 1024.0;
        state.counters["resident_MB"] = (after - before) / 1024.0;
    }
}
// 0: a 24-bit BMP (the usual chart), 1: a PNG.
BENCHMARK(BM_LoadChartMemory)->Arg(0)->Arg(1)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
