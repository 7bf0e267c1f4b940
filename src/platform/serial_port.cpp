#include "platform/serial_port.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "platform/registry.hpp"
#include "platform/services.hpp"
#include "platform/text.hpp"

namespace aerix::platform {

namespace {

constexpr std::u16string_view kPortsKey = u"Software\\Qorvane Software\\Aerix\\Ports";

std::string PortFromRegistry(std::u16string_view portName) {
    RegistryHive* hive = Sys().registry;
    if (!hive)
        return {};
    HKEY key = 0;
    if (hive->OpenKey(kHkeyLocalMachine, kPortsKey, &key) != kErrorSuccess)
        return {};
    char16_t buffer[256] = {};
    std::uint32_t type = 0;
    std::uint32_t size = sizeof buffer - sizeof(char16_t);
    long rc = hive->QueryValue(key, portName, &type, buffer, &size);
    hive->CloseKey(key);
    if (rc != kErrorSuccess || type != kRegSz)
        return {};
    return Utf16ToUtf8(std::u16string_view(buffer));
}

}  // namespace

std::string SerialDevicePath(std::u16string_view portName) {
    if (!portName.empty() && portName.front() == u'/')
        return Utf16ToUtf8(portName);
    if (portName.size() == 5 && portName.substr(0, 3) == u"COM" && portName[3] >= u'1' &&
        portName[3] <= u'9' && portName[4] == u':') {
        std::string mapped = PortFromRegistry(portName);
        if (!mapped.empty())
            return mapped;
        return "/dev/ttyS" + std::to_string(portName[3] - u'1');
    }
    return {};
}

std::vector<std::string> ListSerialDevices() {
    namespace fs = std::filesystem;
    std::vector<std::string> found;
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator("/dev", ec)) {
        std::string name = entry.path().filename().string();
        if (name.rfind("ttyUSB", 0) == 0 || name.rfind("ttyACM", 0) == 0)
            found.push_back(entry.path().string());
    }
    for (const auto& entry : fs::directory_iterator("/dev/serial/by-id", ec))
        found.push_back(entry.path().string());
    std::sort(found.begin(), found.end());
    return found;
}

speed_t BaudToSpeed(std::uint32_t baud) {
    switch (baud) {
        case 1200:
            return B1200;
        case 2400:
            return B2400;
        case 4800:
            return B4800;
        case 9600:
            return B9600;
        case 19200:
            return B19200;
        case 38400:
            return B38400;
        case 57600:
            return B57600;
        case 115200:
            return B115200;
        case 230400:
            return B230400;
        default:
            return 0;
    }
}

namespace {

std::uint32_t SpeedToBaud(speed_t speed) {
    for (std::uint32_t baud :
         {1200u, 2400u, 4800u, 9600u, 19200u, 38400u, 57600u, 115200u, 230400u}) {
        if (BaudToSpeed(baud) == speed)
            return baud;
    }
    return 0;
}

}  // namespace

bool SerialPort::Open(const std::string& device, int* error) {
    int fd = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        *error = errno;
        return false;
    }
    // Not shared: a second program (or a second connection) on the same port is refused.
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        *error = errno == EWOULDBLOCK ? EBUSY : errno;
        ::close(fd);
        return false;
    }
    // A port hands over bytes exactly as they arrive: no line editing, no CR/LF translation,
    // no echo. The old driver was always like that; a tty is not until it is told.
    termios t{};
    if (::tcgetattr(fd, &t) == 0) {
        ::cfmakeraw(&t);
        t.c_cflag |= CLOCAL | CREAD;
        t.c_cc[VMIN] = 0;
        t.c_cc[VTIME] = 0;
        ::tcsetattr(fd, TCSANOW, &t);
    }
    Adopt(fd);
    return true;
}

bool SerialPort::SetTimeouts(const CommTimeouts& timeouts, int* error) {
    if (Fd() < 0) {
        *error = EBADF;
        return false;
    }
    timeouts_ = timeouts;
    return true;
}

int SerialPort::ReadTimeoutMs(std::size_t bytes) const {
    std::uint64_t total = static_cast<std::uint64_t>(timeouts_.readTotalTimeoutMultiplier) * bytes +
                          timeouts_.readTotalTimeoutConstant;
    return static_cast<int>(std::min<std::uint64_t>(total, 0x7FFFFFFF));
}

bool SerialPort::GetState(DeviceControl* control, int* error) {
    if (::tcgetattr(Fd(), &saved_) != 0) {
        *error = errno;
        return false;
    }
    haveState_ = true;
    DeviceControl c;
    c.baudRate = SpeedToBaud(::cfgetispeed(&saved_));
    switch (saved_.c_cflag & CSIZE) {
        case CS5:
            c.byteSize = 5;
            break;
        case CS6:
            c.byteSize = 6;
            break;
        case CS7:
            c.byteSize = 7;
            break;
        default:
            c.byteSize = 8;
            break;
    }
    c.parity = (saved_.c_cflag & PARENB) ? ((saved_.c_cflag & PARODD) ? 1 : 2) : 0;
    c.stopBits = (saved_.c_cflag & CSTOPB) ? 2 : 0;
    c.outxCtsFlow = (saved_.c_cflag & CRTSCTS) != 0;
    c.outX = (saved_.c_iflag & IXON) != 0;
    c.inX = (saved_.c_iflag & IXOFF) != 0;
    int lines = 0;
    if (::ioctl(Fd(), TIOCMGET, &lines) == 0) {
        c.dtrEnable = (lines & TIOCM_DTR) != 0;
        c.rtsEnable = (lines & TIOCM_RTS) != 0;
    }
    *control = c;
    return true;
}

bool SerialPort::SetState(const DeviceControl& c, int* error) {
    if (!haveState_ && ::tcgetattr(Fd(), &saved_) != 0) {
        *error = errno;
        return false;
    }
    termios t = saved_;
    speed_t speed = BaudToSpeed(c.baudRate);
    if (speed == 0) {
        *error = EINVAL;
        return false;
    }
    ::cfsetispeed(&t, speed);
    ::cfsetospeed(&t, speed);
    t.c_cflag &= ~(CSIZE | PARENB | PARODD | CSTOPB | CRTSCTS);
    t.c_cflag |= c.byteSize == 7 ? CS7 : c.byteSize == 6 ? CS6 : c.byteSize == 5 ? CS5 : CS8;
    if (c.parity != 0)
        t.c_cflag |= PARENB | (c.parity == 1 ? PARODD : 0);
    if (c.stopBits == 2)
        t.c_cflag |= CSTOPB;
    if (c.outxCtsFlow)
        t.c_cflag |= CRTSCTS;
    t.c_iflag &= ~(IXON | IXOFF | IXANY);
    if (c.outX)
        t.c_iflag |= IXON;
    if (c.inX)
        t.c_iflag |= IXOFF;
    if (::tcsetattr(Fd(), TCSANOW, &t) != 0) {
        *error = errno;
        return false;
    }
    // DTR and RTS are modem lines; a pseudo-terminal or a USB adapter without them refuses the
    // request, which is harmless for a receiver that only talks.
    int dtrRts = TIOCM_DTR | TIOCM_RTS;
    int on = (c.dtrEnable ? TIOCM_DTR : 0) | (c.rtsEnable ? TIOCM_RTS : 0);
    int off = dtrRts & ~on;
    if (off)
        (void)::ioctl(Fd(), TIOCMBIC, &off);
    if (on)
        (void)::ioctl(Fd(), TIOCMBIS, &on);
    saved_ = t;
    return true;
}

}  // namespace aerix::platform
