// Processor time of 60 s of simulation at one fix a second: the simulator thread flies the plan
// on a clock that runs in virtual time, in lockstep with a "user-interface" loop that paints the
// main window (QPainter on an offscreen image) once per fix, as the window does on each
// invalidation. Reported as the share of one core the 60 s would cost in real time.
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <condition_variable>
#include <mutex>

#include "app/app_state.hpp"
#include "app/command_ids.hpp"
#include "app/main_window.hpp"
#include "app/plan_legs.hpp"
#include "platform/services.hpp"
#include "qt/graphics/qpainter_canvas.hpp"
#include "store/record_store.hpp"
#include "support/test_platform.hpp"

namespace {

using namespace aerix;

// Each sleep of the simulator is one tick; it returns once the tick has been painted.
class LockstepClock : public platform::VirtualClock {
  public:
    bool SleepMs(std::int64_t ms, std::stop_token stop) override {
        Advance(ms);
        std::unique_lock lock(mutex_);
        int tick = ++ticks_;
        changed_.notify_all();
        return changed_.wait(lock, stop, [&] { return painted_ >= tick; });
    }
    void WaitForTick(int tick) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return ticks_ >= tick; });
    }
    void Painted(int tick) {
        std::lock_guard lock(mutex_);
        painted_ = tick;
        changed_.notify_all();
    }

  private:
    std::mutex mutex_;
    std::condition_variable_any changed_;
    int ticks_ = 0;
    int painted_ = 0;
};

class NoWindow : public WindowHost {
  public:
    bool RaiseOtherInstance() override { return false; }
    bool CreateMainWindow() override { return true; }
    void ShowMainWindow() override {}
    void CreateChildWindows() override {}
    void ShowLatLonReadout(bool) override {}
    void ShowScaleReadout(bool) override {}
    void Post(std::function<void()> work) override { work(); }
    void Beep() override {}
    bool OpenHelp(const std::filesystem::path&) override { return false; }
    void Quit(int) override {}
};

class NoDialogs : public DialogHost {
  public:
    int Run(Dialog) override { return kDialogOk; }
};

double CpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    auto seconds = [](const timeval& t) { return t.tv_sec + t.tv_usec / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

void WritePlan() {
    g_app.settings.ActivePlanName.assign(u"Plan1");
    g_app.settings.CurrentPlanId = CreatePlanDatabase(u"Plan1");
    auto h = OpenDatabase(u"Plan1", schema::kSecNumber);
    SectorRecord sector;
    sector.SectorNumber = 1;
    sector.Text401 = u"EGTF";
    sector.Text402 = u"EGKA";
    sector.StartLatitude = 51 * 6000 + 20 * 100;
    sector.StartLongitude = -(0 * 6000 + 33 * 100);
    sector.TrueCourse = 135;
    sector.Distance = 40;
    sector.GroundSpeed = 100;
    sector.Time = 24;
    WriteSector(h, sector);
}

// state.range(0): the view painted, 3 MAP or 1 PLAN.
void BM_SimulationCpu60s(benchmark::State& state) {
    constexpr int kFixes = 60;
    for (auto _ : state) {
        testing::TestPlatform platform;
        LockstepClock clock;
        platform::Sys().clock = &clock;
        WritePlan();
        NoWindow window;
        NoDialogs dialogs;
        MainWindow main(window, dialogs);
        QImage image(240, 268, QImage::Format_RGB32);

        double before = CpuSeconds();
        main.OnCommand(cmd::kShowMap);
        main.OnCommand(cmd::kStartSimulation);
        if (state.range(0) == 1)
            main.OnCommand(cmd::kShowPlan);
        for (int tick = 1; tick <= kFixes; ++tick) {
            clock.WaitForTick(tick);
            QPainter painter(&image);
            qt::QPainterCanvas canvas(painter, 240, 268);
            main.OnPaint(canvas);
            painter.end();
            clock.Painted(tick);
        }
        main.OnCommand(cmd::kStopSimulation);
        double cpu = CpuSeconds() - before;
        state.SetIterationTime(cpu);
        state.counters["cpu_ms_per_60s"] = cpu * 1000;
        state.counters["percent_of_core"] = cpu / 60.0 * 100.0;
        if (g_app.gps.Fix.latitude == 0)
            state.SkipWithError("the simulator did not fly");
    }
}
BENCHMARK(BM_SimulationCpu60s)
    ->Arg(3)
    ->Arg(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
