// The command line of the aerix program.
#pragma once

#include <optional>
#include <string>

namespace aerix::qt {

struct Options {
    std::optional<std::string> home;
    int scale = 0;  // 0: the largest whole factor that fits the screen
    bool acceptDisclaimer = false;
    std::optional<std::string> database;
    std::optional<std::string> view;  // plan, map, hsi, aerix
    bool simulate = false;
    std::optional<std::string> playback;
    bool fast = false;
    std::optional<std::string> screenshot;
    double screenshotAfter = 1.0;
};

// Parses argv; on --help or an error prints the message and returns the exit code to end with.
std::optional<int> ParseOptions(int argc, char** argv, Options* options);

}  // namespace aerix::qt
