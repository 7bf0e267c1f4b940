// The command line of the aerix program.
#pragma once

#include <filesystem>
#include <optional>
#include <ostream>
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

// --playback FILE: FILE becomes the recording that playback reads (target, the data root's
// GpsData.txt). The recording there is kept first as GpsData.txt.1, .2, ... (never over an earlier
// one), and err is told where. False, target untouched, when FILE is missing or the recording
// cannot be kept.
bool PutPlaybackFile(const std::filesystem::path& file, const std::filesystem::path& target,
                     std::ostream& err);

}  // namespace aerix::qt
