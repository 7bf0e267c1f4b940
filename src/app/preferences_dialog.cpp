#include "app/preferences_dialog.hpp"

#include "app/view_hot_keys.hpp"
#include "platform/services.hpp"

namespace aerix {

std::uint8_t SettingsState::*PreferencesDialog::FlagOf(Box box) {
    static constexpr std::array<std::uint8_t SettingsState::*, kBoxCount> flags = {
        &SettingsState::ShowLatLonMap,
        &SettingsState::ShowLatLonHsi,
        &SettingsState::EnableHotKeys,
        &SettingsState::ShowScaleMap,
        &SettingsState::ShowScaleHsi,
        &SettingsState::ShowAirspace,
        &SettingsState::RecordGpsData,
        &SettingsState::OverwriteGpsData,
        &SettingsState::ShowTrackPointer,
        // Saved at exit like the others, but every start begins with it off.
        &SettingsState::IcaoSearch,
    };
    return flags[box];
}

void PreferencesDialog::Open() {
    platform::Sys().ui->SetTitle(kTitle);
    for (int b = 0; b < kBoxCount; ++b)
        checked_[b] = g_app.settings.*FlagOf(static_cast<Box>(b)) == 1;
}

void PreferencesDialog::Click(Box box) {
    checked_[box] = !checked_[box];
    if (box != kUseButtons)
        return;
    if (checked_[box]) {
        g_app.settings.EnableHotKeys = 1;
        RegisterViewHotKeys();
    } else {
        g_app.settings.EnableHotKeys = 0;
        UnregisterViewHotKeys();
    }
}

int PreferencesDialog::Ok() {
    for (int b = 0; b < kBoxCount; ++b) {
        if (b == kUseButtons)
            continue;
        g_app.settings.*FlagOf(static_cast<Box>(b)) = checked_[b] ? 1 : 0;
    }
    // Recording stops the moment the box is cleared, even while a receiver is connected.
    if (!checked_[kRecordGps])
        g_app.gps.GpsRecording.Close();
    Close();
    return 1;
}

int PreferencesDialog::Cancel() {
    Close();
    return 2;
}

void PreferencesDialog::Close() {
    platform::Sys().ui->SetTitle("Aerix");
}

}  // namespace aerix
