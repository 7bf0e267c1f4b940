// How a feed thread asks the main window to stop it: the "Disconnect GPS" and "Stop playback"
// commands. The main window installs a sink that posts them to its own thread; until then (and in
// tools and tests) the stop sequence runs at once on the calling thread.
#pragma once

#include <functional>

namespace aerix {

enum class FeedCommand : unsigned {
    DisconnectGps = 40056,
    StopPlayback = 40075,
    StopSimulation = 40058,
};

void SendFeedCommand(FeedCommand command);

// Replaces the sink; an empty function restores the default.
void SetFeedCommandSink(std::function<void(FeedCommand)> sink);

}  // namespace aerix
