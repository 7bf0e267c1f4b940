// Playback of the recorded GPS file through the same line handling as the receiver, one line a
// second (or ten a second when fast).
#pragma once

#include <atomic>
#include <functional>
#include <istream>
#include <stop_token>
#include <string_view>

#include "gps/feeds.hpp"
#include "gps/gps_fix.hpp"

namespace aerix {

inline constexpr int kPlaybackNormalMs = 1000;
inline constexpr int kPlaybackFastMs = 100;

// Feeds a stream through the line handling into fix (no parsing while drawingRunning is set, as
// in the reader). After each completed line `afterLine` is called with whether the parser ran;
// it returns false to stop. Returns false when stopped.
bool PlayNmeaStream(std::istream& in, GpsFix& fix, const std::atomic<bool>& drawingRunning,
                    const std::function<bool(std::string_view line, bool parsed)>& afterLine);

// The playback thread: plays "\My Documents\GpsData.txt" into feed.gps, then sends "Stop
// playback" (at once when the file is missing). A stop request ends it at its next pause, without
// the command.
void PlaybackThread(std::stop_token stop, FeedWiring feed);

}  // namespace aerix
