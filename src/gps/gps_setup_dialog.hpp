// The "GPS setup" dialog: protocol, port and baud rate. Besides "COM1:".."COM8:" and "Navman" the
// port list offers the serial devices present, "gpsd" and a "tcp:HOST:PORT" address typed in.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "gps/gps_state.hpp"
#include "settings/settings_state.hpp"

namespace aerix {

inline constexpr const char* kGpsSetupTitle = "GPS setup";
inline constexpr const char* kGpsProtocolText = "NMEA0183";
inline constexpr const char* kTcpPortHint = "tcp:HOST:PORT";

class GpsSetupDialogModel {
  public:
    // Shows and stores the port of gps and settings and the baud rate of settings. devices lists
    // the serial devices present (ListSerialDevices by default).
    GpsSetupDialogModel(GpsState& gps, SettingsState& settings,
                        std::function<std::vector<std::string>()> devices = {});

    const std::vector<std::u16string>& PortItems() const { return ports_; }
    int PortSelection() const { return portSelection_; }
    void SelectPort(int index);
    // A port typed into the list's edit field ("tcp:HOST:PORT", a device path, "gpsd", "COM3:").
    void SetPortText(std::u16string text);
    const std::u16string& PortText() const { return portText_; }

    const std::vector<std::u16string>& BaudItems() const { return bauds_; }
    int BaudSelection() const { return baudSelection_; }
    void SelectBaud(int index);

    // Stores the choices and returns true; an unusable port text shows an error and
    // returns false (the dialog stays open).
    bool Ok();
    // Ends without change.
    void Cancel() {}

  private:
    GpsState& gps_;
    SettingsState& settings_;
    std::vector<std::u16string> ports_;
    std::vector<std::u16string> bauds_;
    int portSelection_ = -1;
    int baudSelection_ = -1;
    std::u16string portText_;
};

// True for a port name the program can open: "COM1:".."COM9:", "NavM", "gpsd", "/dev/..." or
// "tcp:HOST:PORT".
bool IsUsablePortName(std::u16string_view name);

}  // namespace aerix
