#include "settings/settings.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include "platform/message_box.hpp"
#include "platform/services.hpp"

namespace aerix {

using platform::HKEY;
using platform::kErrorSuccess;
using platform::ShowError;

namespace {

platform::RegistryHive& Hive() {
    return *platform::Sys().registry;
}

// String values are stored with their terminator: (characters + 1) x 2 bytes. A value loaded
// without a terminator can fill the whole buffer; it is written back as it came, never with
// bytes from past the buffer's end.
template <std::size_t N>
bool WriteText(HKEY key, std::u16string_view name, const WideBuf<N>& text) {
    auto bytes = static_cast<std::uint32_t>(std::min(text.view().size() + 1, N) * sizeof(char16_t));
    return Hive().SetValue(key, name, platform::kRegSz, text.data(), bytes) == kErrorSuccess;
}

bool WriteText(HKEY key, std::u16string_view name, std::u16string_view text) {
    std::u16string terminated(text);
    terminated += u'\0';
    auto bytes = static_cast<std::uint32_t>(terminated.size() * sizeof(char16_t));
    return Hive().SetValue(key, name, platform::kRegSz, terminated.data(), bytes) == kErrorSuccess;
}

bool WriteDword(HKEY key, std::u16string_view name, std::uint32_t value) {
    return Hive().SetValue(key, name, platform::kRegDword, &value, 4) == kErrorSuccess;
}

// A flag written as a REG_DWORD whose data is the single flag byte.
bool WriteFlagByte(HKEY key, std::u16string_view name, std::uint8_t flag) {
    return Hive().SetValue(key, name, platform::kRegDword, &flag, 1) == kErrorSuccess;
}

template <std::size_t N>
bool ReadText(HKEY key, std::u16string_view name, WideBuf<N>& text) {
    auto size = static_cast<std::uint32_t>(WideBuf<N>::Bytes());
    return Hive().QueryValue(key, name, nullptr, text.data(), &size) == kErrorSuccess;
}

// Creates or opens the settings key; says `failure` when it cannot.
bool OpenSettingsKey(const char* failure, HKEY* key, std::uint32_t* disposition) {
    if (Hive().CreateKey(platform::kHkeyLocalMachine, kSettingsKey, key, disposition) ==
        kErrorSuccess) {
        return true;
    }
    ShowError(failure);
    return false;
}

struct FlagSetting {
    std::u16string_view name;
    std::uint8_t SettingsState::*field;
    const char* saveError;
};

// The flags in the order they are loaded and saved.
const std::array<FlagSetting, 9>& Flags() {
    static const std::array<FlagSetting, 9> flags{{
        {u"shlinmap", &SettingsState::ShowLatLonMap, "Could not save shlinmap key"},
        {u"shlinhsi", &SettingsState::ShowLatLonHsi, "Could not save shlinhsi key"},
        {u"shsinmap", &SettingsState::ShowScaleMap, "Could not save shsinmap key"},
        {u"shsinhsi", &SettingsState::ShowScaleHsi, "Could not save shsinhsi key"},
        {u"EnableHotKeys", &SettingsState::EnableHotKeys, "Could not save EnableHotKeys key"},
        {u"showAirspace", &SettingsState::ShowAirspace, "Could not save showAirspace key"},
        {u"recordGPSdata", &SettingsState::RecordGpsData, "Could not save recordGPSdata key"},
        {u"overwriteGPSdata", &SettingsState::OverwriteGpsData,
         "Could not save overwriteGPSdata key"},
        {u"showTrkPointer", &SettingsState::ShowTrackPointer, "Could not save showTrkPointer key"},
    }};
    return flags;
}

}  // namespace

void CreateDefaultSettings(SettingsState& settings) {
    HKEY key = 0;
    std::uint32_t disposition = 0;
    if (!OpenSettingsKey("Could not open/create key:", &key, &disposition))
        return;
    if (disposition == platform::kRegOpenedExistingKey) {
        Hive().CloseKey(key);
        return;
    }
    if (!WriteText(key, u"AcReg", u"G-CESS"))
        ShowError("Could not save AcReg key");
    if (!WriteText(key, u"CuDbase", u""))
        ShowError("Could not save CuDbase key");
    if (!WriteText(key, u"CuPlanName", u""))
        ShowError("Could not save CuPlanName key");
    if (!WriteDword(key, u"CurrentPlan", 0))
        ShowError("Could not save CurrentPlan key");

    settings.FuelCalc = 1;
    settings.IcaoSearch = 0;
    if (!WriteFlagByte(key, u"FuelCalc", settings.FuelCalc))
        ShowError("Could not save key");
    if (!WriteFlagByte(key, u"IcaoSearch", settings.IcaoSearch))
        ShowError("Could not save key");

    if (!WriteText(key, u"CommPort", u"COM1:"))
        ShowError("Could not save CommPort key");
    settings.BaudRate = 4800;
    if (!WriteDword(key, u"BaudRate", settings.BaudRate))
        ShowError("Could not save key");

    settings.ShowLatLonMap = 1;
    settings.ShowLatLonHsi = 0;
    settings.ShowScaleMap = 1;
    settings.ShowScaleHsi = 0;
    settings.EnableHotKeys = 1;
    settings.ShowAirspace = 1;
    settings.RecordGpsData = 0;
    settings.OverwriteGpsData = 0;
    settings.ShowTrackPointer = 1;
    for (const auto& flag : Flags()) {
        // EnableHotKeys is 1 in memory but the byte written is shsinhsi's (0): the registry
        // keeps 0 until the first save.
        std::uint8_t byte = flag.field == &SettingsState::EnableHotKeys ? settings.ShowScaleHsi
                                                                        : settings.*flag.field;
        if (!WriteFlagByte(key, flag.name, byte))
            ShowError("Could not save key");
    }
    Hive().CloseKey(key);
}

void LoadSettings(SettingsState& settings) {
    HKEY key = 0;
    std::uint32_t disposition = 0;
    if (!OpenSettingsKey("Could not open key:", &key, &disposition))
        return;
    if (!ReadText(key, u"AcReg", settings.AircraftReg))
        ShowError("Could not open AcReg key");
    if (!ReadText(key, u"CuDbase", settings.NavDatabaseName))
        ShowError("Could not open CuDbase key");
    if (!ReadText(key, u"CuPlanName", settings.ActivePlanName)) {
        ShowError("Could not open CuPlanName key");
    }

    // One 4-byte buffer serves every numeric read from here on. A value stored with a length of
    // one byte replaces only its first byte, so the rest still holds what the previous read
    // left: a 1-byte flag after BaudRate = 4800 reads as set.
    std::uint32_t shared = 0;
    std::uint32_t size = 4;
    if (Hive().QueryValue(key, u"CurrentPlan", nullptr, &shared, &size) == kErrorSuccess) {
        settings.CurrentPlanId = shared;
    } else {
        ShowError("Could not open Current Plan key");
    }

    ReadText(key, u"CommPort", settings.PortName);
    size = 4;
    if (Hive().QueryValue(key, u"BaudRate", nullptr, &shared, &size) == kErrorSuccess) {
        settings.BaudRate = shared;
    }

    for (const auto& flag : Flags()) {
        size = 4;
        if (Hive().QueryValue(key, flag.name, nullptr, &shared, &size) == kErrorSuccess) {
            settings.*flag.field = shared != 0 ? 1 : 0;
        }
    }
    // FuelCalc and IcaoSearch are deliberately not read back.
    Hive().CloseKey(key);
}

void SaveSettings(const SettingsState& settings) {
    HKEY key = 0;
    std::uint32_t disposition = 0;
    if (!OpenSettingsKey("Could not open/create key:", &key, &disposition))
        return;
    if (!WriteText(key, u"AcReg", settings.AircraftReg))
        ShowError("Could not save AcReg key");
    if (!WriteText(key, u"CuDbase", settings.NavDatabaseName))
        ShowError("Could not save CuDbase key");
    if (!WriteText(key, u"CuPlanName", settings.ActivePlanName))
        ShowError("Could not save CuPlan key");
    if (!WriteDword(key, u"CurrentPlan", settings.CurrentPlanId))
        ShowError("Could not CuPlanId key");

    if (!WriteFlagByte(key, u"FuelCalc", settings.FuelCalc))
        ShowError("Could not save key");
    if (!WriteFlagByte(key, u"IcaoSearch", settings.IcaoSearch))
        ShowError("Could not save key");

    if (!WriteText(key, u"CommPort", settings.PortName))
        ShowError("Could not save CommPort key");
    if (!WriteDword(key, u"BaudRate", settings.BaudRate))
        ShowError("Could not save BaudRate key");

    for (const auto& flag : Flags()) {
        if (!WriteDword(key, flag.name, settings.*flag.field))
            ShowError(flag.saveError);
    }
    if (Hive().CloseKey(key) != kErrorSuccess)
        ShowError("Could not close Key");
}

}  // namespace aerix
