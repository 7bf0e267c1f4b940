#include "feed_test_support.hpp"

#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include "app/app_state.hpp"

namespace aerix::testing {

PseudoTerminal::PseudoTerminal() {
    char name[128] = {};
    if (::openpty(&master_, &slave_, name, nullptr, nullptr) == 0) {
        slavePath_ = name;
        termios t{};
        ::tcgetattr(slave_, &t);
        ::cfmakeraw(&t);
        ::tcsetattr(slave_, TCSANOW, &t);
    }
}

PseudoTerminal::~PseudoTerminal() {
    CloseMaster();
    if (slave_ >= 0)
        ::close(slave_);
}

void PseudoTerminal::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        ssize_t n = ::write(master_, bytes.data(), bytes.size());
        if (n <= 0)
            return;
        bytes.remove_prefix(static_cast<std::size_t>(n));
    }
}

void PseudoTerminal::CloseMaster() {
    if (master_ >= 0)
        ::close(master_);
    master_ = -1;
}

bool WaitUntil(const std::function<bool()>& pred) {
    auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!pred()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

FeedWiring Feeds(FeedCommandSink commands) {
    return FeedWiring{g_app.gps, g_app.leg, g_app.settings, std::move(commands), {}};
}

bool WaitForFix(std::uint64_t seen) {
    return WaitUntil([&] { return g_app.gps.PublishedFix.WaitNewer(seen, 50) != seen; });
}

}  // namespace aerix::testing
