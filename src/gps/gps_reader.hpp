// The receiver's reader thread: bytes into lines, RMC lines recorded and parsed, a silent port
// shown as a void fix.
#pragma once

#include <memory>
#include <stop_token>

#include "gps/feeds.hpp"
#include "platform/byte_source.hpp"

namespace aerix {

// Runs until the port is closed, a stop is requested, or a read fails (reported, and then
// "Disconnect GPS" is sent to the feed's sink). Starts from the fix last published in feed.gps;
// records RMC lines when feed.settings asks for it.
void GpsReaderThread(std::stop_token stop, FeedWiring feed,
                     std::shared_ptr<platform::ByteSource> port, int readTimeoutMs);

}  // namespace aerix
