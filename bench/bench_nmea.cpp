// NMEA sentence parser throughput: sentences a second over a million varied RMC sentences, chosen
// by their type through the sentence table as the reader does.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "gps/gps_fix.hpp"
#include "gps/nmea_sentence.hpp"

namespace {

// A million sentences one after another in one buffer, as a log read into memory.
struct Log {
    std::string text;
    std::vector<std::string_view> sentences;
};

Log Sentences(std::size_t count) {
    Log out;
    std::vector<std::size_t> starts;
    starts.reserve(count + 1);
    char buf[128];
    for (std::size_t i = 0; i < count; ++i) {
        int n = std::snprintf(
            buf, sizeof buf,
            "$GPRMC,%06zu,A,%02zu%02zu.%03zu,%c,%03zu%02zu.%03zu,%c,%05.1f,%05.1f,230394,"
            "%05.1f,%c*6A",
            i % 235959, i % 90, i % 60, i % 1000, i % 2 ? 'N' : 'S', i % 180, i % 60,
            (i * 7) % 1000, i % 3 ? 'E' : 'W', (i % 2000) * 0.1, (i % 3600) * 0.1, (i % 300) * 0.1,
            i % 2 ? 'E' : 'W');
        starts.push_back(out.text.size());
        out.text.append(buf, static_cast<std::size_t>(n));
    }
    starts.push_back(out.text.size());
    out.sentences.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        out.sentences.emplace_back(out.text.data() + starts[i], starts[i + 1] - starts[i]);
    return out;
}

void BM_ParseNmeaSentence(benchmark::State& state) {
    static const Log log = Sentences(1'000'000);
    const auto& sentences = log.sentences;
    aerix::GpsFix fix;
    for (auto _ : state) {
        for (std::string_view sentence : sentences)
            aerix::ParseNmeaSentence(sentence, fix);
        benchmark::DoNotOptimize(fix);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * sentences.size()));
    state.counters["sentences_per_second"] = benchmark::Counter(
        static_cast<double>(state.iterations() * sentences.size()), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_ParseNmeaSentence)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
