#include "gps/port_device_setting.hpp"

#include "platform/registry.hpp"
#include "platform/services.hpp"
#include "settings/settings.hpp"

namespace aerix {

namespace {
constexpr std::u16string_view kValueName = u"CommDevice";
}

void LoadPortDevice(GpsState& gps) {
    gps.PortDevice.clear();
    auto* hive = platform::Sys().registry;
    platform::HKEY key = 0;
    if (!hive || hive->OpenKey(platform::kHkeyLocalMachine, kSettingsKey, &key) != 0)
        return;
    std::uint32_t type = 0;
    std::uint32_t size = static_cast<std::uint32_t>(gps.PortDevice.Bytes() - sizeof(char16_t));
    if (hive->QueryValue(key, kValueName, &type, gps.PortDevice.data(), &size) != 0 ||
        type != platform::kRegSz)
        gps.PortDevice.clear();
    hive->CloseKey(key);
}

bool SavePortDevice(const GpsState& gps) {
    auto* hive = platform::Sys().registry;
    platform::HKEY key = 0;
    std::uint32_t disposition = 0;
    if (!hive ||
        hive->CreateKey(platform::kHkeyLocalMachine, kSettingsKey, &key, &disposition) != 0)
        return false;
    auto text = gps.PortDevice.view();
    bool ok = hive->SetValue(key, kValueName, platform::kRegSz, gps.PortDevice.data(),
                             static_cast<std::uint32_t>((text.size() + 1) * sizeof(char16_t))) == 0;
    hive->CloseKey(key);
    return ok;
}

}  // namespace aerix
