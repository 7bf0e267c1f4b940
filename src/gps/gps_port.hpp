// The receiver's port: finding, opening and configuring it, closing it, and telling the pilot
// when any of that fails. Besides "COM1:".."COM9:" and "NavM" a port name may be a device path,
// "gpsd" (a local gpsd asked for raw NMEA) or "tcp:HOST:PORT" (raw NMEA over TCP).
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "gps/feeds.hpp"
#include "gps/gps_state.hpp"
#include "platform/byte_source.hpp"
#include "settings/settings_state.hpp"

namespace aerix {

inline constexpr std::u16string_view kNavmanPortName = u"NavM";
inline constexpr std::u16string_view kGpsdPortName = u"gpsd";
// A silent line for this long gives a void fix (read total constant 2000 ms plus 10 ms a byte).
inline constexpr int kGpsReadTimeoutMs = 2010;

// The name of the port to open: the device chosen in GPS setup, else the COM name.
std::u16string ConfiguredPortName(const GpsState& gps, const SettingsState& settings);

// Stores a port name: "COM1:".."COM9:" and "NavM" go to the persisted PortName, anything else
// (device path, "gpsd", "tcp:HOST:PORT") to PortDevice, which then takes precedence.
void SetConfiguredPortName(GpsState& gps, SettingsState& settings, std::u16string_view name);

// "COM1:".."COM9:".
bool IsComPortName(std::u16string_view name);

// Writes the device name of the Navman receiver's port ("Drivers\Active" subkey whose "Key"
// names "Drivers\OptPack\0100") into buffer; 1 when found, 0 otherwise.
int FindNavmanPort(char16_t* buffer, std::size_t size);

// "Communications Error <errno> \r\n<step>" in a box without caption, then "Disconnect GPS".
void ReportCommsError(const FeedWiring& feed, std::string_view stepText, int errorNumber);

// Opens and configures the port and starts the reader thread into feed.gps.GpsThread. 0 on
// success, 1 on failure (reported).
int OpenGpsPort(const FeedWiring& feed);

// Closes the port if open; the reader notices and ends within one read time-out (at once, in
// practice: the wait is woken).
void CloseGpsPort(GpsState& gps);

// Opens the byte source for a port name (no thread) at baudRate; the Navman port sets baudRate to
// its 57600. Null on failure with *stepText and *error telling which step failed and why.
std::shared_ptr<platform::ByteSource> OpenPortSource(std::u16string portName,
                                                     std::uint32_t& baudRate, const char** stepText,
                                                     int* error);

}  // namespace aerix
