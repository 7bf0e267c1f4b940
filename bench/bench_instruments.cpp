// One frame of the HSI and of the AERIX view over a 125,000-waypoint navigation database and a
// few thousand airspace elements: what the drawing thread spends per fix. Drawn with QPainter
// (offscreen, as on the device's screen) and on the recording canvas (the geometry alone).
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <random>

#include "app/app_state.hpp"
#include "platform/recording_canvas.hpp"
#include "qt/graphics/qt_graphics.hpp"
#include "views/instrument_frame.hpp"

namespace {

using namespace aerix;

constexpr int kWaypoints = 125000;
constexpr double kLat = 50 * 6000.0;
constexpr double kLon = 5 * 6000.0;

// Waypoints over 20 x 20 degrees around the aircraft, every kind; airspace circles and
// four-sided outlines over the same area.
struct Data {
    std::vector<NavEntry> nav;
    std::vector<AirspaceEntry> airspace;
    Data() {
        std::mt19937 random(7);
        std::uniform_real_distribution<double> spread(-10 * 6000.0, 10 * 6000.0);
        nav.resize(kWaypoints);
        for (int i = 0; i < kWaypoints; ++i) {
            NavEntry& e = nav[static_cast<std::size_t>(i)];
            e.latitude = static_cast<std::int32_t>(kLat + spread(random));
            e.longitude = static_cast<std::int32_t>(kLon + spread(random));
            e.type = static_cast<std::int16_t>(1 + i % 9);
            e.ident.assign(u"WP" + Utf8ToUtf16(std::to_string(i % 1000)));
        }
        for (int i = 0; i < 1000; ++i) {
            double lat = kLat + spread(random), lon = kLon + spread(random);
            auto add = [&](const char16_t* key, double dLat, double dLon, double radius = 0) {
                AirspaceEntry e;
                e.keyword.assign(key);
                e.latitude = static_cast<std::int32_t>(lat + dLat);
                e.longitude = static_cast<std::int32_t>(lon + dLon);
                e.valueA = radius;
                airspace.push_back(e);
            };
            if (i % 2) {
                add(u"CTR", 0, 0);
                add(u"CIRCLE", 0, 0, 8);
            } else {
                add(u"TMA", 0, 0);
                add(u"GLINETO", 3000, 0);
                add(u"GLINETO", 3000, 3000);
                add(u"GLINETO", 0, 3000);
                add(u"GLINETO", 0, 0);
            }
        }
    }
};

InstrumentFrameInput Input(const Data& data, bool aerix, std::uint32_t range) {
    InstrumentFrameInput in;
    in.aerix = aerix;
    in.centreX = aerix ? 215 : 120;
    in.centreY = aerix ? 193 : 135;
    in.rangeStep = range;
    in.fix.latitude = kLat;
    in.fix.longitude = kLon;
    in.fix.trueTrack = in.fix.magneticTrack = 63;
    in.fix.groundSpeed = 110;
    in.haveFix = true;
    in.showScale = true;
    in.nav = data.nav;
    in.airspace = data.airspace;
    for (int i = 0; i < 5; ++i)
        in.route.push_back({kLat + i * 1200.0, kLon - 3000 + i * 1500.0, kLat + (i + 1) * 1200.0,
                            kLon - 3000 + (i + 1) * 1500.0});
    in.leg.valid = true;
    in.leg.course = 51;
    in.leg.bar.valid = true;
    in.leg.bar.name = u"WP17";
    in.leg.bar.latitude = kLat + 1200;
    in.leg.bar.longitude = kLon + 1500;
    in.leg.bar.bearing = 58;
    in.leg.bar.distance = 14.2;
    in.leg.bar.relativeAngle = 7;
    in.leg.reference = in.leg.bar.reference = {VariationSource::kReceiver, 0.0};
    in.leg.startLatitude = kLat - 1200;
    in.leg.startLongitude = kLon - 1500;
    in.leg.endLatitude = kLat + 1200;
    in.leg.endLongitude = kLon + 1500;
    return in;
}

const Data& Shared() {
    static const Data data;
    return data;
}

// Arguments: 0 HSI / 1 AERIX, and the range step.
void BM_InstrumentFrameQt(benchmark::State& state) {
    qt::QtGraphics graphics;
    InstrumentFrameInput in =
        Input(Shared(), state.range(0) == 1, static_cast<std::uint32_t>(state.range(1)));
    for (auto _ : state) {
        platform::Bitmap frame =
            RenderInstrumentFrame(in, [&](platform::Bitmap& b) { return graphics.CanvasOn(b); });
        benchmark::DoNotOptimize(frame.Row(0));
    }
}
BENCHMARK(BM_InstrumentFrameQt)
    ->ArgNames({"aerix", "range"})
    ->Args({0, 1})
    ->Args({0, 16})
    ->Args({1, 1})
    ->Args({1, 16})
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(3)
    ->ReportAggregatesOnly(true);

void BM_InstrumentFrameRecording(benchmark::State& state) {
    platform::RecordingGraphics graphics;
    InstrumentFrameInput in =
        Input(Shared(), state.range(0) == 1, static_cast<std::uint32_t>(state.range(1)));
    for (auto _ : state) {
        platform::Bitmap frame =
            RenderInstrumentFrame(in, [&](platform::Bitmap& b) { return graphics.CanvasOn(b); });
        graphics.canvases.clear();
        benchmark::DoNotOptimize(frame.Row(0));
    }
}
BENCHMARK(BM_InstrumentFrameRecording)
    ->ArgNames({"aerix", "range"})
    ->Args({0, 16})
    ->Args({1, 16})
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(3)
    ->ReportAggregatesOnly(true);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
