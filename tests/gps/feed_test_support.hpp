// Helpers for the feed tests: a pseudo-terminal playing the receiver, and waiting for a thread's
// effect with a deadline that only guards against a hang.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <thread>

#include "gps/feeds.hpp"

namespace aerix::testing {

class PseudoTerminal {
  public:
    PseudoTerminal();
    ~PseudoTerminal();
    const std::string& SlavePath() const { return slavePath_; }
    void Write(std::string_view bytes);
    void CloseMaster();

  private:
    int master_ = -1;
    int slave_ = -1;
    std::string slavePath_;
};

// Polls until pred holds; false after 10 s (a hang, not a speed check).
bool WaitUntil(const std::function<bool()>& pred);

// The program's groups, with `commands` for the feeds' own stop commands (none: the stop runs
// at once on the feed's thread).
FeedWiring Feeds(FeedCommandSink commands = {});

// Waits for the next publication of g_app.gps.PublishedFix after `seen`; false on a hang.
bool WaitForFix(std::uint64_t seen);

}  // namespace aerix::testing
