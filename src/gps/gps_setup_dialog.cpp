#include "gps/gps_setup_dialog.hpp"

#include "gps/gps_port.hpp"
#include "platform/message_box.hpp"
#include "platform/serial_port.hpp"
#include "platform/tcp_source.hpp"

namespace aerix {

namespace {

constexpr std::u16string_view kNavmanItem = u"Navman";
// 19200 is not offered.
constexpr std::uint32_t kBaudRates[] = {1200, 2400, 4800, 9600, 38400, 57600};

}  // namespace

bool IsUsablePortName(std::u16string_view name) {
    if (IsComPortName(name))
        return true;
    if (name == kNavmanPortName || name == kGpsdPortName)
        return true;
    if (name.size() > 1 && name.front() == u'/')
        return true;
    std::string host;
    int port = 0;
    return platform::ParseTcpPortName(Utf16ToUtf8(name), &host, &port);
}

GpsSetupDialogModel::GpsSetupDialogModel(GpsState& gps, SettingsState& settings,
                                         std::function<std::vector<std::string>()> devices)
    : gps_(gps), settings_(settings) {
    for (char c = '1'; c <= '8'; ++c)
        ports_.push_back(u"COM" + std::u16string(1, static_cast<char16_t>(c)) + u":");
    ports_.emplace_back(kNavmanItem);
    for (const auto& device : devices ? devices() : platform::ListSerialDevices())
        ports_.push_back(Utf8ToUtf16(device));
    ports_.emplace_back(kGpsdPortName);
    for (auto rate : kBaudRates)
        bauds_.push_back(Utf8ToUtf16(std::to_string(rate)));

    std::u16string stored = ConfiguredPortName(gps_, settings_);
    portText_ = stored == kNavmanPortName ? std::u16string(kNavmanItem) : stored;
    for (std::size_t i = 0; i < ports_.size(); ++i) {
        if (ports_[i] == portText_)
            portSelection_ = static_cast<int>(i);
    }
    // A stored address that is not in the list (a tcp: feed, a device now unplugged) stays as
    // the typed text.
    for (std::size_t i = 0; i < std::size(kBaudRates); ++i) {
        if (kBaudRates[i] == settings_.BaudRate)
            baudSelection_ = static_cast<int>(i);
    }
}

void GpsSetupDialogModel::SelectPort(int index) {
    if (index < 0 || index >= static_cast<int>(ports_.size()))
        return;
    portSelection_ = index;
    portText_ = ports_[static_cast<std::size_t>(index)];
}

void GpsSetupDialogModel::SetPortText(std::u16string text) {
    portText_ = std::move(text);
    portSelection_ = -1;
    for (std::size_t i = 0; i < ports_.size(); ++i) {
        if (ports_[i] == portText_)
            portSelection_ = static_cast<int>(i);
    }
}

void GpsSetupDialogModel::SelectBaud(int index) {
    if (index >= 0 && index < static_cast<int>(bauds_.size()))
        baudSelection_ = index;
}

bool GpsSetupDialogModel::Ok() {
    std::u16string port = portText_ == kNavmanItem ? std::u16string(kNavmanPortName) : portText_;
    if (!IsUsablePortName(port)) {
        platform::ShowError(
            "Unknown GPS port. Choose COM1: to COM8:, Navman, a device, gpsd or "
            "tcp:HOST:PORT");
        return false;
    }
    SetConfiguredPortName(gps_, settings_, port);
    if (baudSelection_ >= 0)
        settings_.BaudRate = kBaudRates[baudSelection_];
    return true;
}

}  // namespace aerix
