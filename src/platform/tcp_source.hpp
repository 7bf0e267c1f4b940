// Raw NMEA over TCP: flight simulators and phone apps send it this way, and a local gpsd gives it
// when asked with ?WATCH.
#pragma once

#include <memory>
#include <string>

#include "platform/byte_source.hpp"

namespace aerix::platform {

class TcpSource : public ByteSource {
  public:
    // Connects to host:port within timeoutMs. False with *error set (an errno value, or
    // EHOSTUNREACH when the name does not resolve).
    bool Connect(const std::string& host, int port, int timeoutMs, int* error);
    // Writes all of text; false with *error set.
    bool Send(const std::string& text, int* error);

  protected:
    int EndOfStreamError() const override;
};

// The address of a "tcp:HOST:PORT" name; false when the name is not of that form.
bool ParseTcpPortName(const std::string& name, std::string* host, int* port);

inline constexpr int kGpsdPort = 2947;
inline constexpr const char* kGpsdWatchNmea = "?WATCH={\"enable\":true,\"nmea\":true}\n";

}  // namespace aerix::platform
