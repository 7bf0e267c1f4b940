#include "gps/gps_port.hpp"

#include <cerrno>
#include <cstdio>
#include <mutex>
#include <system_error>

#include "gps/feeds.hpp"
#include "gps/gps_reader.hpp"
#include "platform/message_box.hpp"
#include "platform/registry.hpp"
#include "platform/serial_port.hpp"
#include "platform/services.hpp"
#include "platform/tcp_source.hpp"

namespace aerix {

namespace {

using platform::kErrorSuccess;
using platform::kHkeyLocalMachine;

constexpr std::u16string_view kActiveDrivers = u"Drivers\\Active";
constexpr std::u16string_view kNavmanDriver = u"Drivers\\OptPack\\0100";
constexpr int kConnectTimeoutMs = 5000;

// Port state is touched by the user-interface thread and, through a reported error, by the reader.
std::mutex& PortMutex() {
    static std::mutex m;
    return m;
}

std::shared_ptr<platform::ByteSource> OpenSerial(const std::string& device, std::uint32_t baudRate,
                                                 const char** step, int* error) {
    auto port = std::make_shared<platform::SerialPort>();
    *step = "Opening Comms Port.";
    if (device.empty()) {
        *error = ENOENT;
        return nullptr;
    }
    if (!port->Open(device, error))
        return nullptr;
    platform::CommTimeouts timeouts;
    timeouts.readIntervalTimeout = 2000;
    timeouts.readTotalTimeoutMultiplier = 10;
    timeouts.readTotalTimeoutConstant = 2000;
    *step = "Setting comm. timeouts.";
    if (!port->SetTimeouts(timeouts, error))
        return nullptr;
    platform::DeviceControl control;
    *step = "Getting Comms. State.";
    if (!port->GetState(&control, error))
        return nullptr;
    control.baudRate = baudRate;
    control.byteSize = 8;
    control.parity = 0;
    control.stopBits = 0;
    control.outxCtsFlow = false;
    control.outxDsrFlow = false;
    control.dtrEnable = false;
    control.outX = false;
    control.inX = false;
    control.rtsEnable = false;
    *step = "Setting Comms. State.";
    if (!port->SetState(control, error))
        return nullptr;
    return port;
}

std::shared_ptr<platform::ByteSource> OpenTcp(const std::string& host, int portNumber, bool askGpsd,
                                              const char** step, int* error) {
    auto source = std::make_shared<platform::TcpSource>();
    *step = "Opening Comms Port.";
    if (!source->Connect(host, portNumber, kConnectTimeoutMs, error))
        return nullptr;
    if (askGpsd && !source->Send(platform::kGpsdWatchNmea, error))
        return nullptr;
    return source;
}

}  // namespace

std::u16string ConfiguredPortName(const GpsState& gps, const SettingsState& settings) {
    if (!gps.PortDevice.empty())
        return std::u16string(gps.PortDevice.view());
    return std::u16string(settings.PortName.view());
}

bool IsComPortName(std::u16string_view name) {
    return name.size() == 5 && name.substr(0, 3) == u"COM" && name[3] >= u'1' && name[3] <= u'9' &&
           name[4] == u':';
}

void SetConfiguredPortName(GpsState& gps, SettingsState& settings, std::u16string_view name) {
    if (IsComPortName(name) || name == kNavmanPortName) {
        settings.PortName.assign(name);
        gps.PortDevice.clear();
    } else {
        gps.PortDevice.assign(name);
    }
}

int FindNavmanPort(char16_t* buffer, std::size_t size) {
    platform::RegistryHive* hive = platform::Sys().registry;
    platform::HKEY active = 0;
    if (!hive || hive->OpenKey(kHkeyLocalMachine, kActiveDrivers, &active) != kErrorSuccess)
        return 0;
    int found = 0;
    std::u16string name;
    for (std::uint32_t index = 0; hive->EnumKey(active, index, &name) == kErrorSuccess; ++index) {
        std::u16string path = std::u16string(kActiveDrivers) + u"\\" + name;
        platform::HKEY sub = 0;
        if (hive->OpenKey(kHkeyLocalMachine, path, &sub) != kErrorSuccess)
            continue;
        char16_t key[128] = {};
        std::uint32_t type = 0;
        std::uint32_t bytes = sizeof key - sizeof(char16_t);
        bool isNavman = hive->QueryValue(sub, u"Key", &type, key, &bytes) == kErrorSuccess &&
                        std::u16string_view(key).find(kNavmanDriver) != std::u16string_view::npos;
        if (isNavman && size > 0) {
            std::uint32_t nameBytes = static_cast<std::uint32_t>((size - 1) * sizeof(char16_t));
            std::fill(buffer, buffer + size, u'\0');
            if (hive->QueryValue(sub, u"Name", &type, buffer, &nameBytes) == kErrorSuccess)
                found = 1;
        }
        hive->CloseKey(sub);
        if (found)
            break;
    }
    hive->CloseKey(active);
    return found;
}

void ReportCommsError(const FeedWiring& feed, std::string_view stepText, int errorNumber) {
    char text[160];
    std::snprintf(text, sizeof text, "Communications Error %d \r\n%.*s", errorNumber,
                  static_cast<int>(stepText.size()), stepText.data());
    platform::ShowError(text);
    SendFeedCommand(feed, FeedCommand::DisconnectGps);
}

std::shared_ptr<platform::ByteSource> OpenPortSource(std::u16string portName,
                                                     std::uint32_t& baudRate, const char** step,
                                                     int* error) {
    *error = 0;
    if (portName == kNavmanPortName) {
        char16_t device[64] = {};
        if (!FindNavmanPort(device, std::size(device))) {
            *step = "Opening Navman Port.";
            *error = ENODEV;
            return nullptr;
        }
        baudRate = 57600;
        portName = device;
    }
    std::string name = Utf16ToUtf8(portName);
    if (portName == kGpsdPortName)
        return OpenTcp("localhost", platform::kGpsdPort, true, step, error);
    std::string host;
    int tcpPort = 0;
    if (platform::ParseTcpPortName(name, &host, &tcpPort))
        return OpenTcp(host, tcpPort, false, step, error);
    return OpenSerial(platform::SerialDevicePath(portName), baudRate, step, error);
}

int OpenGpsPort(const FeedWiring& feed) {
    const char* step = "Opening Comms Port.";
    int error = 0;
    auto port = OpenPortSource(ConfiguredPortName(feed.gps, feed.settings), feed.settings.BaudRate,
                               &step, &error);
    if (!port) {
        ReportCommsError(feed, step, error);
        return 1;
    }
    {
        std::lock_guard lock(PortMutex());
        feed.gps.GpsPort = port;
    }
    try {
        std::lock_guard lock(FeedSlotMutex());
        feed.gps.GpsThread = std::jthread(GpsReaderThread, feed, port, kGpsReadTimeoutMs);
    } catch (const std::system_error& e) {
        CloseGpsPort(feed.gps);
        ReportCommsError(feed, "Creating Thread.", e.code().value());
        return 1;
    }
    return 0;
}

void CloseGpsPort(GpsState& gps) {
    std::shared_ptr<platform::ByteSource> port;
    {
        std::lock_guard lock(PortMutex());
        port = std::move(gps.GpsPort);
        gps.GpsPort.reset();
    }
    if (port)
        port->Close();
}

}  // namespace aerix
