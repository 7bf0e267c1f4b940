#include "platform/disk_space.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <vector>

namespace aerix::platform {

bool IsOutOfSpace(int err) {
    return err == ENOSPC || err == EDQUOT || err == EFBIG;
}

bool NoRoomLeft(const std::filesystem::path& dir) {
    // Larger than anything a failed write can leave free on a full disk.
    constexpr std::size_t kProbe = 8u << 20;
    std::string pattern = (dir / ".aerix-space-XXXXXX").string();
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    int fd = ::mkstemp(name.data());
    if (fd < 0)
        return IsOutOfSpace(errno);
    // A file size limit would otherwise end the process at the probe.
    struct sigaction ignore {
    }, previous{};
    ignore.sa_handler = SIG_IGN;
    ::sigaction(SIGXFSZ, &ignore, &previous);
    std::vector<char> chunk(64u << 10, 0);
    bool full = false;
    for (std::size_t written = 0; written < kProbe && !full;) {
        ssize_t n = ::write(fd, chunk.data(), chunk.size());
        if (n < 0 && errno == EINTR)
            continue;
        if (n < static_cast<ssize_t>(chunk.size())) {
            // A short write is the disk filling up; the next one says why.
            full = n >= 0 ? (::write(fd, chunk.data(), 1) < 0 && IsOutOfSpace(errno))
                          : IsOutOfSpace(errno);
            break;
        }
        written += static_cast<std::size_t>(n);
    }
    ::sigaction(SIGXFSZ, &previous, nullptr);
    ::close(fd);
    ::unlink(name.data());
    return full;
}

bool SyncFile(const std::filesystem::path& file) {
    int fd = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    bool done = ::fsync(fd) == 0;
    ::close(fd);
    return done;
}

bool SyncFolder(const std::filesystem::path& dir) {
    int fd = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return false;
    bool done = ::fsync(fd) == 0;
    ::close(fd);
    return done;
}

}  // namespace aerix::platform
