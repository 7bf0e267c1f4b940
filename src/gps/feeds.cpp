#include "gps/feeds.hpp"

#include <mutex>
#include <thread>

#include "app/state/app_state.hpp"
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

bool FeedViewShown(const char* warning) {
    if (g_app.settings.ViewMode == kViewInstruments || g_app.settings.ViewMode == kViewMap)
        return true;
    platform::ShowNotice(warning, "Warning");
    return false;
}

void SetSource(std::uint32_t source) {
    g_app.settings.GpsSource = source;
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

bool ConnectGps() {
    if (!FeedViewShown("Select Map, HSI or AERIX view before connecting GPS"))
        return false;
    JoinRetired(g_app.gps.RetiredGpsThread);
    std::jthread previous;
    {
        std::lock_guard lock(FeedMutex());
        previous = Take(g_app.gps.GpsThread);
    }
    // A reader still running owns the old port; closing it ends the reader.
    CloseGpsPort();
    Finish(std::move(previous), g_app.gps.RetiredGpsThread);
    {
        std::lock_guard lock(FeedMutex());
        SetSource(kSourceRealtime);
        g_app.leg.ActiveSectorIndex = 0;
        MarkFeedStart();
    }
    platform::HoldScreenAwake(platform::AwakeHolder::kGpsSlot, true);
    if (OpenGpsPort() == 0)
        return true;
    platform::HoldScreenAwake(platform::AwakeHolder::kGpsSlot, false);
    return false;
}

bool StartSimulation() {
    if (!FeedViewShown("Select Map, HSI or AERIX view before starting simulation"))
        return false;
    JoinRetired(g_app.gps.RetiredGpsThread);
    std::lock_guard lock(FeedMutex());
    // A running feed (the receiver or a simulation) is not replaced.
    if (g_app.gps.GpsThread.joinable())
        return false;
    g_app.gps.SimulatorStepCount.store(0);
    g_app.leg.ActiveSectorIndex = 0;
    MarkFeedStart();
    platform::HoldScreenAwake(platform::AwakeHolder::kGpsSlot, true);
    g_app.gps.GpsThread = std::jthread([](std::stop_token stop) { SimulatorThread(stop); });
    SetSource(kSourceSimulated);
    g_app.gps.SimulatorScreenX = 120;
    g_app.gps.SimulatorScreenY = 120;
    g_app.gps.SimulatorOffsetX = 0;
    g_app.gps.SimulatorOffsetY = 0;
    return true;
}

bool StartPlayback(bool fast) {
    if (!FeedViewShown("Select Map, HSI or AERIX view before GPS data playback"))
        return false;
    // Only "Stop playback" clears the fast flag, so a normal start after a fast one stays fast.
    if (fast)
        g_app.gps.PlaybackFast.store(1);
    JoinRetired(g_app.gps.RetiredPlaybackThread);
    std::jthread previous;
    {
        std::lock_guard lock(FeedMutex());
        previous = Take(g_app.gps.PlaybackThread);
    }
    Finish(std::move(previous), g_app.gps.RetiredPlaybackThread);
    std::lock_guard lock(FeedMutex());
    SetSource(kSourceRecorded);
    g_app.leg.ActiveSectorIndex = 0;
    MarkFeedStart();
    // Held before the thread starts: a playback that ends at once lets go after this.
    platform::HoldScreenAwake(platform::AwakeHolder::kPlaybackSlot, true);
    g_app.gps.PlaybackThread = std::jthread(PlaybackThread);
    return true;
}

void DisconnectGps() {
    std::jthread taken;
    {
        std::lock_guard lock(FeedMutex());
        SetSource(kSourceNone);
        taken = Take(g_app.gps.GpsThread);
    }
    CloseGpsPort();
    g_app.gps.GpsRecording.Close();
    platform::HoldScreenAwake(platform::AwakeHolder::kGpsSlot, false);
    Finish(std::move(taken), g_app.gps.RetiredGpsThread);
}

void StopSimulation() {
    std::jthread taken;
    {
        std::lock_guard lock(FeedMutex());
        SetSource(kSourceNone);
        taken = Take(g_app.gps.GpsThread);
    }
    platform::HoldScreenAwake(platform::AwakeHolder::kGpsSlot, false);
    Finish(std::move(taken), g_app.gps.RetiredGpsThread);
}

void StopPlayback() {
    std::jthread taken;
    {
        std::lock_guard lock(FeedMutex());
        SetSource(kSourceNone);
        g_app.gps.PlaybackFast.store(0);
        taken = Take(g_app.gps.PlaybackThread);
    }
    platform::HoldScreenAwake(platform::AwakeHolder::kPlaybackSlot, false);
    Finish(std::move(taken), g_app.gps.RetiredPlaybackThread);
}

}  // namespace aerix
