#include "qt/options.hpp"

#include <CLI/CLI.hpp>

#include "platform/numbered_backup.hpp"

namespace aerix::qt {

std::optional<int> ParseOptions(int argc, char** argv, Options* o) {
    CLI::App app{"Aerix, the pilot's navigation companion", "aerix"};
    // Qt's own options (-platform, -style ...) pass through.
    app.allow_extras();
    app.add_option("--home", o->home, "Data root (default $AERIX_HOME, else ~/.local/share/aerix)");
    app.add_option("--scale", o->scale, "Whole scale factor of the 240 x 320 window")
        ->check(CLI::Range(1, 16));
    app.add_flag("--accept-disclaimer", o->acceptDisclaimer, "Answer the disclaimer with Accept");
    app.add_option("--database", o->database,
                   "Navigation database the start-up chooser picks when none is set");
    app.add_option("--view", o->view, "View to show after start")
        ->check(CLI::IsMember({"plan", "map", "hsi", "aerix"}));
    auto* simulate = app.add_flag("--simulate", o->simulate, "Start the simulation");
    auto* playback =
        app.add_option("--playback", o->playback, "Play a recorded NMEA file")->excludes(simulate);
    app.add_flag("--fast", o->fast, "Play back ten times faster")->needs(playback);
    auto* shot = app.add_option("--screenshot", o->screenshot,
                                "Save the window as PNG, then exit as the Exit command does");
    app.add_option("--screenshot-after", o->screenshotAfter, "Seconds before the screenshot")
        ->needs(shot)
        ->check(CLI::NonNegativeNumber);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        int code = app.exit(e);
        return code == 0 ? 0 : 2;
    }
    return std::nullopt;
}

bool PutPlaybackFile(const std::filesystem::path& file, const std::filesystem::path& target,
                     std::ostream& err) {
    namespace fs = std::filesystem;
    std::error_code ec;
    if (fs::exists(target) && fs::equivalent(file, target, ec))
        return true;
    if (!fs::exists(file)) {
        err << "aerix: no such file: " << file.string() << std::endl;
        return false;
    }
    fs::path kept = platform::KeepNumberedBackup(target, ec);
    if (ec) {
        err << "aerix: could not keep the recording " << target.string() << ": " << ec.message()
            << "; nothing was changed" << std::endl;
        return false;
    }
    if (!kept.empty())
        err << "aerix: the earlier recording is kept as " << kept.string() << std::endl;
    fs::copy_file(file, target, fs::copy_options::overwrite_existing, ec);
    if (ec) {
        err << "aerix: could not copy " << file.string() << ": " << ec.message() << std::endl;
        return false;
    }
    return true;
}

}  // namespace aerix::qt
