// Start-up of the aerix program to its first painted main window, the splash's wait excluded:
// the binary is started on the offscreen platform with a fresh data root on the first run and
// the same root afterwards; the time runs from the spawn to the moment it reports its first
// paint, less the time the splash was up.
#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

extern char** environ;

namespace {

struct Run {
    double secondsToPaint = -1;
    double splashSeconds = 0;
};

Run StartOnce(const std::string& home) {
    int pipeFds[2];
    if (pipe(pipeFds) != 0)
        return {};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipeFds[1], 2);
    posix_spawn_file_actions_addclose(&actions, pipeFds[0]);
    std::string shot = home + "/shot.png";
    std::vector<std::string> args = {AERIX_BINARY_PATH,
                                     "--home",
                                     home,
                                     "--accept-disclaimer",
                                     "--database",
                                     "World",
                                     "--scale",
                                     "1",
                                     "--view",
                                     "plan",
                                     "--screenshot",
                                     shot,
                                     "--screenshot-after",
                                     "0"};
    std::vector<char*> argv;
    for (auto& a : args)
        argv.push_back(a.data());
    argv.push_back(nullptr);
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("AERIX_TIMING", "1", 1);
    setenv("AERIX_SPLASH_MS", "0", 1);
    auto start = std::chrono::steady_clock::now();
    pid_t pid = 0;
    int rc = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(pipeFds[1]);
    Run run;
    if (rc != 0) {
        close(pipeFds[0]);
        return run;
    }
    FILE* err = fdopen(pipeFds[0], "r");
    char line[512];
    while (fgets(line, sizeof line, err)) {
        long paintMs = 0, splashMs = 0;
        if (std::sscanf(line, "first-paint-ms: %ld splash-ms: %ld", &paintMs, &splashMs) == 2) {
            auto at = std::chrono::steady_clock::now();
            run.splashSeconds = splashMs / 1000.0;
            run.secondsToPaint =
                std::chrono::duration<double>(at - start).count() - run.splashSeconds;
        }
    }
    fclose(err);
    int status = 0;
    waitpid(pid, &status, 0);
    return run;
}

void BM_StartupToFirstPaint(benchmark::State& state) {
    auto home = std::filesystem::temp_directory_path() /
                ("aerix-bench-startup-" + std::to_string(getpid()));
    std::filesystem::remove_all(home);
    StartOnce(home.string());  // the first run writes the defaults and the databases
    for (auto _ : state) {
        Run run = StartOnce(home.string());
        if (run.secondsToPaint < 0) {
            state.SkipWithError("aerix did not report its first paint");
            break;
        }
        state.SetIterationTime(run.secondsToPaint);
    }
    std::filesystem::remove_all(home);
}
BENCHMARK(BM_StartupToFirstPaint)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

}  // namespace

BENCHMARK_MAIN();
