// RmcParser throughput: sentences a second over a million varied RMC sentences.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <vector>

#include "gps/gps_fix.hpp"
#include "gps/rmc_parser.hpp"

namespace {

// A million sentences one after another in one buffer, each terminated, as a log read into memory.
struct Log {
    std::u16string text;
    std::vector<std::size_t> starts;
};

Log Sentences(std::size_t count) {
    Log out;
    out.starts.reserve(count);
    char buf[128];
    for (std::size_t i = 0; i < count; ++i) {
        std::snprintf(buf, sizeof buf,
                      "$GPRMC,%06zu,A,%02zu%02zu.%03zu,%c,%03zu%02zu.%03zu,%c,%05.1f,%05.1f,230394,"
                      "%05.1f,%c*6A",
                      i % 235959, i % 90, i % 60, i % 1000, i % 2 ? 'N' : 'S', i % 180, i % 60,
                      (i * 7) % 1000, i % 3 ? 'E' : 'W', (i % 2000) * 0.1, (i % 3600) * 0.1,
                      (i % 300) * 0.1, i % 2 ? 'E' : 'W');
        out.starts.push_back(out.text.size());
        out.text.append(buf, buf + std::char_traits<char>::length(buf));
        out.text.push_back(u'\0');
    }
    return out;
}

void BM_RmcParser(benchmark::State& state) {
    static const Log log = Sentences(1'000'000);
    const auto& sentences = log.starts;
    aerix::GpsFix fix;
    for (auto _ : state) {
        for (std::size_t start : sentences)
            aerix::RmcParser(log.text.c_str() + start, fix);
        benchmark::DoNotOptimize(fix);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * sentences.size()));
    state.counters["sentences_per_second"] = benchmark::Counter(
        static_cast<double>(state.iterations() * sentences.size()), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_RmcParser)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
