#include "gps/feeds.hpp"

#include <mutex>
#include <thread>

#include "gps/fix_publication.hpp"
#include "gps/gps_port.hpp"
#include "gps/playback.hpp"
#include "gps/simulator.hpp"
#include "platform/message_box.hpp"
#include "platform/screen_awake.hpp"
#include "platform/services.hpp"

namespace aerix {

std::mutex& FeedSlotMutex() {
    static std::mutex m;
    return m;
}

namespace {

std::mutex& FeedMutex() {
    return FeedSlotMutex();
}

bool FeedViewShown(const SettingsState& settings, const char* warning) {
    if (settings.ViewMode == kViewInstruments || settings.ViewMode == kViewMap)
        return true;
    platform::ShowNotice(warning, "Warning");
    return false;
}

void SetSource(SettingsState& settings, std::uint32_t source) {
    settings.GpsSource = source;
    platform::Sys().ui->SetTitle(SourceTitle(source));
}

// Takes the thread out of its slot with a stop requested. Called under the feed lock.
std::jthread Take(std::jthread& slot) {
    std::jthread taken = std::move(slot);
    if (taken.joinable())
        taken.request_stop();
    return taken;
}

// Waits for a taken thread to end, unless it is the calling thread itself: that one is parked
// and joined later, once it has returned.
void Finish(std::jthread taken, std::jthread& retired) {
    if (!taken.joinable())
        return;
    if (taken.get_id() == std::this_thread::get_id()) {
        std::jthread older;
        {
            std::lock_guard lock(FeedMutex());
            older = std::move(retired);
            retired = std::move(taken);
        }
        if (older.joinable() && older.get_id() != std::this_thread::get_id())
            older.join();
        return;
    }
    taken.join();
}

void JoinRetired(std::jthread& retired) {
    std::jthread old;
    {
        std::lock_guard lock(FeedMutex());
        old = std::move(retired);
    }
    if (old.joinable() && old.get_id() != std::this_thread::get_id())
        old.join();
}

}  // namespace

const char* SourceTitle(unsigned source) {
    switch (source) {
        case kSourceRealtime:
            return "Realtime GPS data";
        case kSourceSimulated:
            return "Simulated GPS data";
        case kSourceRecorded:
            return "Recorded GPS data";
        default:
            return "Aerix";
    }
}

bool ConnectGps(const FeedWiring& feed) {
    if (!FeedViewShown(feed.settings, "Select Map, HSI or AERIX view before connecting GPS"))
        return false;
    GpsState& gps = feed.gps;
    JoinRetired(gps.RetiredGpsThread);
    std::jthread previous;
    {
        std::lock_guard lock(FeedMutex());
        previous = Take(gps.GpsThread);
    }
    // A reader still running owns the old port; closing it ends the reader.
    CloseGpsPort(gps);
    Finish(std::move(previous), gps.RetiredGpsThread);
    {
        std::lock_guard lock(FeedMutex());
        SetSource(feed.settings, kSourceRealtime);
        feed.leg.ActiveSectorIndex = 0;
        MarkFeedStart(gps);
    }
    platform::HoldScreenAwake(platform::AwakeHolder::kGpsSlot, true);
    if (OpenGpsPort(feed) == 0)
        return true;
    platform::HoldScreenAwake(platform::AwakeHolder::kGpsSlot, false);
    return false;
}

bool StartSimulation(const FeedWiring& feed) {
    if (!FeedViewShown(feed.settings, "Select Map, HSI or AERIX view before starting simulation"))
        return false;
    GpsState& gps = feed.gps;
    JoinRetired(gps.RetiredGpsThread);
    std::lock_guard lock(FeedMutex());
    // A running feed (the receiver or a simulation) is not replaced.
    if (gps.GpsThread.joinable())
        return false;
    gps.SimulatorStepCount.store(0);
    feed.leg.ActiveSectorIndex = 0;
    MarkFeedStart(gps);
    platform::HoldScreenAwake(platform::AwakeHolder::kGpsSlot, true);
    gps.GpsThread = std::jthread([&gps, &leg = feed.leg, legs = feed.legs](std::stop_token stop) {
        SimulatorThread(stop, gps, leg, legs);
    });
    SetSource(feed.settings, kSourceSimulated);
    gps.SimulatorScreenX = 120;
    gps.SimulatorScreenY = 120;
    gps.SimulatorOffsetX = 0;
    gps.SimulatorOffsetY = 0;
    return true;
}

bool StartPlayback(const FeedWiring& feed, bool fast) {
    if (!FeedViewShown(feed.settings, "Select Map, HSI or AERIX view before GPS data playback"))
        return false;
    GpsState& gps = feed.gps;
    // Only "Stop playback" clears the fast flag, so a normal start after a fast one stays fast.
    if (fast)
        gps.PlaybackFast.store(1);
    JoinRetired(gps.RetiredPlaybackThread);
    std::jthread previous;
    {
        std::lock_guard lock(FeedMutex());
        previous = Take(gps.PlaybackThread);
    }
    Finish(std::move(previous), gps.RetiredPlaybackThread);
    std::lock_guard lock(FeedMutex());
    SetSource(feed.settings, kSourceRecorded);
    feed.leg.ActiveSectorIndex = 0;
    MarkFeedStart(gps);
    // Held before the thread starts: a playback that ends at once lets go after this.
    platform::HoldScreenAwake(platform::AwakeHolder::kPlaybackSlot, true);
    gps.PlaybackThread = std::jthread(PlaybackThread, feed);
    return true;
}

void DisconnectGps(GpsState& gps, SettingsState& settings) {
    std::jthread taken;
    {
        std::lock_guard lock(FeedMutex());
        SetSource(settings, kSourceNone);
        taken = Take(gps.GpsThread);
    }
    CloseGpsPort(gps);
    gps.GpsRecording.Close();
    platform::HoldScreenAwake(platform::AwakeHolder::kGpsSlot, false);
    Finish(std::move(taken), gps.RetiredGpsThread);
}

void StopSimulation(GpsState& gps, SettingsState& settings) {
    std::jthread taken;
    {
        std::lock_guard lock(FeedMutex());
        SetSource(settings, kSourceNone);
        taken = Take(gps.GpsThread);
    }
    platform::HoldScreenAwake(platform::AwakeHolder::kGpsSlot, false);
    Finish(std::move(taken), gps.RetiredGpsThread);
}

void StopPlayback(GpsState& gps, SettingsState& settings) {
    std::jthread taken;
    {
        std::lock_guard lock(FeedMutex());
        SetSource(settings, kSourceNone);
        gps.PlaybackFast.store(0);
        taken = Take(gps.PlaybackThread);
    }
    platform::HoldScreenAwake(platform::AwakeHolder::kPlaybackSlot, false);
    Finish(std::move(taken), gps.RetiredPlaybackThread);
}

void SendFeedCommand(const FeedWiring& feed, FeedCommand command) {
    if (feed.commands) {
        feed.commands(command);
        return;
    }
    switch (command) {
        case FeedCommand::DisconnectGps:
            DisconnectGps(feed.gps, feed.settings);
            break;
        case FeedCommand::StopPlayback:
            StopPlayback(feed.gps, feed.settings);
            break;
        case FeedCommand::StopSimulation:
            StopSimulation(feed.gps, feed.settings);
            break;
    }
}

}  // namespace aerix
