// Cost of the navigation mathematics that every repaint and every planning leg calls.
#include <benchmark/benchmark.h>

#include <array>
#include <random>

#include "gps/nav_math.hpp"

namespace {

struct Leg {
    double lat1, lon1, lat2, lon2;  // CentiMinutes
};

// Short and long legs in every direction, across the 180th meridian and the equator.
const std::vector<Leg>& Legs() {
    static const std::vector<Leg> legs = [] {
        std::mt19937 random(42);
        std::uniform_real_distribution<double> lat(-80 * 6000.0, 80 * 6000.0);
        std::uniform_real_distribution<double> lon(-180 * 6000.0, 180 * 6000.0);
        std::uniform_real_distribution<double> hop(-300.0, 300.0);
        std::vector<Leg> out;
        for (int i = 0; i < 1024; ++i) {
            double a = lat(random), b = lon(random);
            if (i % 2) {
                out.push_back({a, b, a + hop(random) * 100, b + hop(random) * 100});
            } else {
                out.push_back({a, b, lat(random), lon(random)});
            }
        }
        return out;
    }();
    return legs;
}

void CourseDistanceBench(benchmark::State& state, unsigned char greatCircle) {
    const auto& legs = Legs();
    std::size_t i = 0;
    for (auto _ : state) {
        const Leg& l = legs[i++ & 1023];
        double course = 0, distance = 0;
        aerix::CourseDistance(l.lat1, l.lon1, l.lat2, l.lon2, course, distance, greatCircle);
        benchmark::DoNotOptimize(course);
        benchmark::DoNotOptimize(distance);
    }
}

void BM_CourseDistanceRhumbLine(benchmark::State& state) {
    CourseDistanceBench(state, 0);
}
void BM_CourseDistanceGreatCircle(benchmark::State& state) {
    CourseDistanceBench(state, 1);
}

void BM_WindTriangle(benchmark::State& state) {
    int n = 0;
    for (auto _ : state) {
        double heading = 0, groundSpeed = 0;
        aerix::WindTriangle(90 + n % 60, n % 360, (n * 7) % 360, n % 40, heading, groundSpeed);
        benchmark::DoNotOptimize(heading);
        benchmark::DoNotOptimize(groundSpeed);
        ++n;
    }
}

}  // namespace

BENCHMARK(BM_CourseDistanceRhumbLine);
BENCHMARK(BM_CourseDistanceGreatCircle);
BENCHMARK(BM_WindTriangle);
BENCHMARK_MAIN();
