#include "platform/tcp_source.hpp"

#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <cerrno>
#include <charconv>

namespace aerix::platform {

bool ParseTcpPortName(const std::string& name, std::string* host, int* port) {
    if (name.rfind("tcp:", 0) != 0)
        return false;
    std::string rest = name.substr(4);
    auto colon = rest.rfind(':');
    if (colon == std::string::npos || colon == 0)
        return false;
    std::string h = rest.substr(0, colon);
    if (h.size() > 2 && h.front() == '[' && h.back() == ']')
        h = h.substr(1, h.size() - 2);
    const char* first = rest.data() + colon + 1;
    const char* last = rest.data() + rest.size();
    int p = 0;
    auto [ptr, ec] = std::from_chars(first, last, p);
    if (ec != std::errc() || ptr != last || first == last || p < 1 || p > 65535)
        return false;
    *host = h;
    *port = p;
    return true;
}

int TcpSource::EndOfStreamError() const {
    return ECONNRESET;
}

bool TcpSource::Connect(const std::string& host, int port, int timeoutMs, int* error) {
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* list = nullptr;
    std::string service = std::to_string(port);
    if (::getaddrinfo(host.c_str(), service.c_str(), &hints, &list) != 0 || !list) {
        *error = EHOSTUNREACH;
        return false;
    }
    int lastError = ECONNREFUSED;
    for (addrinfo* a = list; a; a = a->ai_next) {
        int fd =
            ::socket(a->ai_family, a->ai_socktype | SOCK_NONBLOCK | SOCK_CLOEXEC, a->ai_protocol);
        if (fd < 0) {
            lastError = errno;
            continue;
        }
        if (::connect(fd, a->ai_addr, a->ai_addrlen) != 0 && errno != EINPROGRESS) {
            lastError = errno;
            ::close(fd);
            continue;
        }
        pollfd p{fd, POLLOUT, 0};
        int ready = ::poll(&p, 1, timeoutMs);
        int soError = ready == 0 ? ETIMEDOUT : 0;
        socklen_t len = sizeof soError;
        if (ready > 0)
            ::getsockopt(fd, SOL_SOCKET, SO_ERROR, &soError, &len);
        if (ready < 0)
            soError = errno;
        if (soError != 0) {
            lastError = soError;
            ::close(fd);
            continue;
        }
        ::freeaddrinfo(list);
        Adopt(fd);
        return true;
    }
    ::freeaddrinfo(list);
    *error = lastError;
    return false;
}

bool TcpSource::Send(const std::string& text, int* error) {
    std::size_t sent = 0;
    while (sent < text.size()) {
        ssize_t n = ::send(Fd(), text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
        if (n < 0) {
            if (errno == EAGAIN || errno == EINTR) {
                pollfd p{Fd(), POLLOUT, 0};
                ::poll(&p, 1, 1000);
                continue;
            }
            *error = errno;
            return false;
        }
        sent += static_cast<std::size_t>(n);
    }
    return true;
}

}  // namespace aerix::platform
