// A serial device through POSIX termios, configured the way the old communications calls did it:
// time-outs, then the device control settings read, changed field by field and written back.
#pragma once

#include <termios.h>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/byte_source.hpp"

namespace aerix::platform {

// Read time-outs in milliseconds, with the meaning the old port driver gave them.
struct CommTimeouts {
    std::uint32_t readIntervalTimeout = 0;
    std::uint32_t readTotalTimeoutMultiplier = 0;
    std::uint32_t readTotalTimeoutConstant = 0;
    std::uint32_t writeTotalTimeoutMultiplier = 0;
    std::uint32_t writeTotalTimeoutConstant = 0;
};

// The device control fields the program changes; the rest of the device's settings are kept.
struct DeviceControl {
    std::uint32_t baudRate = 0;
    std::uint8_t byteSize = 8;
    std::uint8_t parity = 0;    // 0 none, 1 odd, 2 even
    std::uint8_t stopBits = 0;  // 0 one, 2 two
    bool outxCtsFlow = false;
    bool outxDsrFlow = false;
    bool dtrEnable = false;
    bool rtsEnable = false;
    bool outX = false;
    bool inX = false;
};

class SerialPort : public ByteSource {
  public:
    // Opens an existing device for reading and writing, not shared. False with *error set.
    bool Open(const std::string& device, int* error);
    bool SetTimeouts(const CommTimeouts& timeouts, int* error);
    bool GetState(DeviceControl* control, int* error);
    bool SetState(const DeviceControl& control, int* error);

    // What a read of `bytes` bytes waits before it gives up on a silent line.
    int ReadTimeoutMs(std::size_t bytes) const;

  private:
    termios saved_{};
    bool haveState_ = false;
    CommTimeouts timeouts_{};
};

// Maps a pocket-computer port name to a device: "COM1:".."COM9:" through the registry key
// "Software\Qorvane Software\Aerix\Ports" (value "COM1:" = "/dev/ttyUSB0"), else /dev/ttyS0..8;
// a name starting with "/" is that device. Empty for anything else.
std::string SerialDevicePath(std::u16string_view portName);

// The serial devices present: /dev/ttyUSB*, /dev/ttyACM* and /dev/serial/by-id/*, sorted.
std::vector<std::string> ListSerialDevices();

// termios speed for a baud rate; 0 when the rate is not supported.
speed_t BaudToSpeed(std::uint32_t baud);

}  // namespace aerix::platform
