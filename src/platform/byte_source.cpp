#include "platform/byte_source.hpp"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <cerrno>
#include <cstdint>

namespace aerix::platform {

ByteSource::ByteSource() {
    wake_ = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
}

ByteSource::~ByteSource() {
    if (fd_ >= 0)
        ::close(fd_);
    if (wake_ >= 0)
        ::close(wake_);
}

void ByteSource::Adopt(int fd) {
    fd_ = fd;
    open_.store(fd >= 0, std::memory_order_release);
}

int ByteSource::EndOfStreamError() const {
    return EIO;
}

void ByteSource::Close() {
    if (!open_.exchange(false, std::memory_order_acq_rel))
        return;
    std::uint64_t one = 1;
    if (wake_ >= 0)
        (void)!::write(wake_, &one, sizeof one);
}

int ByteSource::Read(char* buffer, std::size_t size, int timeoutMs, int* error) {
    if (!IsOpen())
        return 0;
    pollfd fds[2] = {{fd_, POLLIN, 0}, {wake_, POLLIN, 0}};
    for (;;) {
        int ready = ::poll(fds, wake_ >= 0 ? 2 : 1, timeoutMs);
        if (ready < 0) {
            if (errno == EINTR)
                continue;
            *error = errno;
            return -1;
        }
        if (ready == 0 || !IsOpen())
            return 0;
        break;
    }
    ssize_t n = ::read(fd_, buffer, size);
    if (n > 0)
        return static_cast<int>(n);
    if (n == 0) {
        *error = EndOfStreamError();
        return -1;
    }
    if (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR)
        return 0;
    *error = errno;
    return -1;
}

}  // namespace aerix::platform
