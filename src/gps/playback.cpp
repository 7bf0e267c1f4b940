#include "gps/playback.hpp"

#include <fstream>

#include "gps/line_assembler.hpp"
#include "gps/nmea_line.hpp"
#include "platform/services.hpp"

namespace aerix {

bool PlayNmeaStream(std::istream& in, GpsFix& fix, const std::atomic<bool>& drawingRunning,
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
            bool parsed = HandleNmeaLine(line, fix, drawingRunning.load());
            if (!afterLine(line, parsed))
                return false;
        }
    }
    return true;
}

void PlaybackThread(std::stop_token stop, FeedWiring feed) {
    std::ifstream in(platform::Sys().root->Resolve(u"\\My Documents\\GpsData.txt"),
                     std::ios::binary);
    if (!in) {
        SendFeedCommand(feed, FeedCommand::StopPlayback);
        return;
    }
    GpsState& gps = feed.gps;
    GpsFix fix = gps.PublishedFix.Snapshot();
    bool finished =
        PlayNmeaStream(in, fix, gps.InstrumentDrawingRunning, [&](std::string_view, bool parsed) {
            if (parsed) {
                gps.PublishedFix.Publish(fix);
                platform::Sys().ui->InvalidateMainWindow(false);
            }
            int pause = gps.PlaybackFast.load() == 1 ? kPlaybackFastMs : kPlaybackNormalMs;
            return platform::Sys().clock->SleepMs(pause, stop);
        });
    in.close();
    if (finished)
        SendFeedCommand(feed, FeedCommand::StopPlayback);
}

}  // namespace aerix
