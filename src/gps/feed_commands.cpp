#include "gps/feed_commands.hpp"

#include <mutex>

#include "gps/feeds.hpp"

namespace aerix {

namespace {

std::mutex& SinkMutex() {
    static std::mutex m;
    return m;
}

std::function<void(FeedCommand)>& Sink() {
    static std::function<void(FeedCommand)> sink;
    return sink;
}

void RunDefault(FeedCommand command) {
    switch (command) {
        case FeedCommand::DisconnectGps:
            DisconnectGps();
            break;
        case FeedCommand::StopPlayback:
            StopPlayback();
            break;
        case FeedCommand::StopSimulation:
            StopSimulation();
            break;
    }
}

}  // namespace

void SendFeedCommand(FeedCommand command) {
    std::function<void(FeedCommand)> sink;
    {
        std::lock_guard lock(SinkMutex());
        sink = Sink();
    }
    if (sink)
        sink(command);
    else
        RunDefault(command);
}

void SetFeedCommandSink(std::function<void(FeedCommand)> sink) {
    std::lock_guard lock(SinkMutex());
    Sink() = std::move(sink);
}

}  // namespace aerix
