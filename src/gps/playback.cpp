#include "gps/playback.hpp"

#include <fstream>

#include "app/state/app_state.hpp"
#include "gps/feed_commands.hpp"
#include "gps/line_assembler.hpp"
#include "gps/nmea_line.hpp"
#include "platform/services.hpp"

namespace aerix {

bool PlayNmeaStream(std::istream& in, GpsFix& fix,
                    const std::function<bool(std::string_view line, bool parsed)>& afterLine) {
    LineAssembler assembler;
    char bytes[4096];
    while (in) {
        in.read(bytes, sizeof bytes);
        std::streamsize n = in.gcount();
        if (n <= 0)
            break;
        for (std::streamsize i = 0; i < n; ++i) {
            if (!assembler.Push(bytes[i]))
                continue;
            std::string_view line = assembler.Line();
            bool parsed = HandleNmeaLine(line, fix, g_app.gps.InstrumentDrawingRunning.load());
            if (!afterLine(line, parsed))
                return false;
        }
    }
    return true;
}

void PlaybackThread(std::stop_token stop) {
    std::ifstream in(platform::Sys().root->Resolve(u"\\My Documents\\GpsData.txt"),
                     std::ios::binary);
    if (!in) {
        SendFeedCommand(FeedCommand::StopPlayback);
        return;
    }
    GpsFix fix = g_app.gps.PublishedFix.Snapshot();
    bool finished = PlayNmeaStream(in, fix, [&](std::string_view, bool parsed) {
        if (parsed) {
            g_app.gps.PublishedFix.Publish(fix);
            platform::Sys().ui->InvalidateMainWindow(false);
        }
        int pause = g_app.gps.PlaybackFast.load() == 1 ? kPlaybackFastMs : kPlaybackNormalMs;
        return platform::Sys().clock->SleepMs(pause, stop);
    });
    in.close();
    if (finished)
        SendFeedCommand(FeedCommand::StopPlayback);
}

}  // namespace aerix
