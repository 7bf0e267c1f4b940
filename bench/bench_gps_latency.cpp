// Latency from the last byte of a sentence written to a pseudo-terminal to the reader's
// invalidation of the main window: median and 99th percentile.
#include <benchmark/benchmark.h>

#include <pty.h>
#include <termios.h>
#include <unistd.h>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <thread>
#include <vector>

#include "app/app_state.hpp"
#include "gps/gps_port.hpp"
#include "gps/gps_reader.hpp"
#include "platform/services.hpp"

namespace {

using Clock = std::chrono::steady_clock;

class TimingUi : public aerix::platform::Ui {
  public:
    int MessageBox(std::string_view, std::string_view, unsigned) override { return 1; }
    void SetTitle(std::string_view) override {}
    void InvalidateMainWindow(bool) override {
        std::lock_guard lock(mutex_);
        last_ = Clock::now();
        ++count_;
        changed_.notify_all();
    }
    std::optional<aerix::platform::FileDialogResult> ChooseFile(
        const aerix::platform::FileDialogRequest&) override {
        return std::nullopt;
    }
    // Waits for the invalidation after `seen` and returns its time.
    Clock::time_point WaitAfter(long seen, long* count) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return count_ > seen; });
        *count = count_;
        return last_;
    }
    long Count() {
        std::lock_guard lock(mutex_);
        return count_;
    }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    Clock::time_point last_;
    long count_ = 0;
};

void BM_SentenceToInvalidate(benchmark::State& state) {
    namespace fs = std::filesystem;
    fs::path root = fs::temp_directory_path() / "aerix-bench-latency";
    aerix::platform::DataRoot data(root);
    aerix::platform::RegistryHive hive;
    aerix::platform::SystemClock clock;
    aerix::platform::IdleTimer idle;
    TimingUi ui;
    aerix::platform::Sys() = {&data, &hive, &ui, &clock, nullptr, &idle};

    int master = -1;
    int slave = -1;
    char name[128] = {};
    if (::openpty(&master, &slave, name, nullptr, nullptr) != 0) {
        state.SkipWithError("openpty failed");
        return;
    }
    const char* step = nullptr;
    int error = 0;
    aerix::g_app.settings.BaudRate = 4800;
    auto port = aerix::OpenPortSource(aerix::Utf8ToUtf16(name), aerix::g_app.settings.BaudRate,
                                      &step, &error);
    if (!port) {
        state.SkipWithError(step);
        return;
    }
    std::jthread reader(
        aerix::GpsReaderThread,
        aerix::FeedWiring{aerix::g_app.gps, aerix::g_app.leg, aerix::g_app.settings, {}, {}}, port,
        aerix::kGpsReadTimeoutMs);
    const std::string sentence =
        "$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W*6A\r\n";
    std::vector<double> micros;
    for (auto _ : state) {
        long seen = ui.Count();
        // Everything but the last byte first, so the time runs from the byte that completes it.
        (void)!::write(master, sentence.data(), sentence.size() - 1);
        std::this_thread::sleep_for(std::chrono::microseconds(200));
        auto start = Clock::now();
        (void)!::write(master, sentence.data() + sentence.size() - 1, 1);
        long count = 0;
        auto end = ui.WaitAfter(seen, &count);
        micros.push_back(std::chrono::duration<double, std::micro>(end - start).count());
    }
    port->Close();
    reader.join();
    ::close(master);
    ::close(slave);
    std::sort(micros.begin(), micros.end());
    state.counters["median_us"] = micros[micros.size() / 2];
    state.counters["p99_us"] = micros[std::min(micros.size() - 1, micros.size() * 99 / 100)];
    aerix::platform::Sys() = {};
}
BENCHMARK(BM_SentenceToInvalidate)->Iterations(2000)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
