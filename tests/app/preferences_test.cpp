#include "app/preferences_dialog.hpp"

#include <gtest/gtest.h>

#include "app/view_hot_keys.hpp"
#include "test_platform.hpp"

namespace aerix {
namespace {

using Dialog = PreferencesDialog;

// The flag behind each box, in the dialog's order.
std::uint8_t& Flag(int box) {
    std::uint8_t* flags[] = {&g_app.settings.ShowLatLonMap,    &g_app.settings.ShowLatLonHsi,
                             &g_app.settings.EnableHotKeys,    &g_app.settings.ShowScaleMap,
                             &g_app.settings.ShowScaleHsi,     &g_app.settings.ShowAirspace,
                             &g_app.settings.RecordGpsData,    &g_app.settings.OverwriteGpsData,
                             &g_app.settings.ShowTrackPointer, &g_app.settings.IcaoSearch};
    return *flags[box];
}

class PreferencesTest : public ::testing::Test {
  protected:
    testing::TestPlatform p;
    Dialog dialog;
};

TEST_F(PreferencesTest, BoxIsCheckedOnlyWhenItsFlagIsExactlyOne) {
    for (std::uint8_t value : {0, 1, 2, 255}) {
        for (int b = 0; b < Dialog::kBoxCount; ++b)
            Flag(b) = value;
        dialog.Open();
        for (int b = 0; b < Dialog::kBoxCount; ++b)
            EXPECT_EQ(dialog.Checked(Dialog::Box(b)), value == 1) << Dialog::kLabels[b];
    }
    EXPECT_EQ(p.Ui().Titles().back(), "Preferences");
}

TEST_F(PreferencesTest, OkCopiesEveryBoxButTheHotKeyBox) {
    const std::uint8_t initial[] = {1, 2, 2, 1, 0, 2, 1, 0, 1, 0};  // 2 shows as clear
    for (int b = 0; b < Dialog::kBoxCount; ++b)
        Flag(b) = initial[b];
    dialog.Open();
    dialog.Click(Dialog::kLatLonHsi);  // clear -> checked
    dialog.Click(Dialog::kScaleMap);   // checked -> clear
    dialog.Click(Dialog::kIcaoSearch);
    EXPECT_EQ(dialog.Ok(), 1);
    const std::uint8_t expected[] = {1, 1, 2, 0, 0, 0, 1, 0, 1, 1};
    for (int b = 0; b < Dialog::kBoxCount; ++b)
        EXPECT_EQ(Flag(b), expected[b]) << Dialog::kLabels[b];
    EXPECT_EQ(p.Ui().Titles(), (std::vector<std::string>{"Preferences", "Aerix"}));
    EXPECT_TRUE(p.Keys().Calls().empty());
}

TEST_F(PreferencesTest, CancelChangesNothingButTheImmediateHotKeyToggle) {
    g_app.settings.EnableHotKeys = 1;
    g_app.settings.ShowAirspace = 1;
    RegisterViewHotKeys();
    dialog.Open();
    dialog.Click(Dialog::kAirspace);
    dialog.Click(Dialog::kUseButtons);
    EXPECT_EQ(g_app.settings.EnableHotKeys, 0);
    EXPECT_FALSE(p.Keys().IsRegistered(193));
    EXPECT_EQ(dialog.Cancel(), 2);
    EXPECT_EQ(g_app.settings.EnableHotKeys, 0);
    EXPECT_EQ(g_app.settings.ShowAirspace, 1);
    EXPECT_EQ(p.Ui().Titles().back(), "Aerix");

    dialog.Open();
    dialog.Click(Dialog::kUseButtons);
    EXPECT_EQ(g_app.settings.EnableHotKeys, 1);
    EXPECT_EQ(dialog.Cancel(), 2);
    EXPECT_EQ(p.Keys().Calls(),
              (std::vector<int>{193, 194, 195, 196, -193, -194, -195, -196, 193, 194, 195, 196}));
}

TEST_F(PreferencesTest, ClearingRecordGpsDataClosesTheRecordingOnOk) {
    auto file = p.Root() / "GpsData.txt";
    for (bool clear : {false, true}) {
        g_app.settings.RecordGpsData = 1;
        ASSERT_TRUE(g_app.gps.GpsRecording.Open(file, false));
        dialog.Open();
        if (clear)
            dialog.Click(Dialog::kRecordGps);
        dialog.Ok();
        EXPECT_EQ(g_app.gps.GpsRecording.IsOpen(), !clear);
        EXPECT_EQ(g_app.settings.RecordGpsData, clear ? 0 : 1);
    }
}

TEST(ViewHotKeys, RegistersTheFourButtonsWithWinAndKeyUp) {
    testing::TestPlatform p;
    RegisterViewHotKeys();
    auto registered = p.Keys().Registered();
    ASSERT_EQ(registered.size(), 4u);
    for (const auto& [id, binding] : registered) {
        EXPECT_EQ(binding.modifiers, 0x1008u);
        EXPECT_EQ(binding.virtualKey, static_cast<unsigned>(id));
    }
    UnregisterViewHotKeys();
    EXPECT_TRUE(p.Keys().Registered().empty());
    EXPECT_EQ(p.Keys().Calls(), (std::vector<int>{193, 194, 195, 196, -193, -194, -195, -196}));
}

}  // namespace
}  // namespace aerix
