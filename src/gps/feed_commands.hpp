// How a feed thread asks the main window to stop it: the "Disconnect GPS" and "Stop playback"
// commands, by their menu ids.
#pragma once

#include <functional>

namespace aerix {

enum class FeedCommand : unsigned {
    DisconnectGps = 40056,
    StopPlayback = 40075,
    StopSimulation = 40058,
};

// Where a feed sends its stop command. The main window posts it to its own thread; an empty one
// (tools, tests) runs the stop sequence at once on the calling thread.
using FeedCommandSink = std::function<void(FeedCommand)>;

}  // namespace aerix
