// The position and its feeds: the fix the views paint, the fix the feeds publish, the receiver
// port, the recording, the simulator's progress and the feed threads.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <thread>

#include "gps/fix_publisher.hpp"
#include "gps/gps_fix.hpp"
#include "platform/byte_source.hpp"
#include "platform/recording_file.hpp"
#include "platform/text.hpp"

namespace aerix {

struct GpsState {
    platform::RecordingFile GpsRecording;
    // The present fix as the user-interface thread paints it: a copy of PublishedFix taken by
    // TakeFixSnapshot() (gps/fix_publication.hpp) before painting.
    GpsFix Fix;
    // Feeds publish whole fixes here; nothing else writes it but ClearVoid.
    FixPublisher PublishedFix;
    // A device path, "gpsd" or "tcp:HOST:PORT" chosen in GPS setup; when set it is used instead
    // of PortName (whose 12 characters hold only "COM1:".."COM9:" and "NavM").
    WideBuf<256> PortDevice;
    // The open receiver port; null when closed. Closing it ends the reader.
    std::shared_ptr<platform::ByteSource> GpsPort;
    // PublishedFix's sequence when the present feed started: only later fixes sequence the plan.
    std::uint64_t FeedStartSequence = 0;
    // Playback waits 100 ms between lines instead of 1000.
    std::atomic<std::uint8_t> PlaybackFast{0};
    // Distance flown on the current simulated leg, radians of arc (simulator thread only).
    double SimulatedDistance = 0.0;
    // Simulator steps since the simulation started, and its screen position and offsets.
    std::atomic<std::uint32_t> SimulatorStepCount{0};
    int SimulatorScreenX = 120;
    int SimulatorScreenY = 120;
    int SimulatorOffsetX = 0;
    int SimulatorOffsetY = 0;
    // The AERIX/HSI drawing thread is running: feeds then leave the fix alone.
    std::atomic<bool> InstrumentDrawingRunning{false};
    // Feed threads: the receiver and the simulator share one slot, playback has its own. A feed
    // that stops itself parks its thread in the retired slot, joined at the next start or stop.
    // Keep these last: destruction joins them before the fields they use go away.
    std::jthread GpsThread;
    std::jthread PlaybackThread;
    std::jthread RetiredGpsThread;
    std::jthread RetiredPlaybackThread;
};

}  // namespace aerix
