#include <gtest/gtest.h>

#include "app/app_state.hpp"
#include "gps/gps_data_dialog.hpp"
#include "gps/gps_setup_dialog.hpp"
#include "gps/port_device_setting.hpp"
#include "gps/rmc_parser.hpp"
#include "support/test_platform.hpp"

namespace aerix {
namespace {

std::vector<std::string> NoDevices() {
    return {};
}

TEST(GpsSetupDialog, ListsPortsAndRatesWithTheStoredOnesSelected) {
    testing::TestPlatform platform;
    g_app.settings.PortName.assign(u"NavM");
    g_app.settings.BaudRate = 38400;
    GpsSetupDialogModel model(g_app.gps, g_app.settings,
                              [] { return std::vector<std::string>{"/dev/ttyUSB0"}; });
    std::vector<std::u16string> ports = {u"COM1:",  u"COM2:",        u"COM3:", u"COM4:",
                                         u"COM5:",  u"COM6:",        u"COM7:", u"COM8:",
                                         u"Navman", u"/dev/ttyUSB0", u"gpsd"};
    EXPECT_EQ(model.PortItems(), ports);
    EXPECT_EQ(model.PortSelection(), 8);  // "NavM" shows as "Navman"
    std::vector<std::u16string> rates = {u"1200", u"2400", u"4800", u"9600", u"38400", u"57600"};
    EXPECT_EQ(model.BaudItems(), rates);
    EXPECT_EQ(model.BaudSelection(), 4);
}

TEST(GpsSetupDialog, OkStoresTheChoices) {
    testing::TestPlatform platform;
    struct Case {
        std::u16string text;
        std::u16string portName;
        std::u16string device;
    } cases[] = {
        {u"Navman", u"NavM", u""},
        {u"COM3:", u"COM3:", u""},
        {u"/dev/serial/by-id/usb-u-blox_GNSS-if00", u"COM1:",
         u"/dev/serial/by-id/usb-u-blox_GNSS-if00"},
        {u"tcp:192.168.1.10:10110", u"COM1:", u"tcp:192.168.1.10:10110"},
        {u"gpsd", u"COM1:", u"gpsd"},
    };
    for (const auto& c : cases) {
        g_app.settings.PortName.assign(u"COM1:");
        g_app.gps.PortDevice.clear();
        g_app.settings.BaudRate = 4800;
        GpsSetupDialogModel model(g_app.gps, g_app.settings, NoDevices);
        model.SetPortText(c.text);
        model.SelectBaud(1);
        ASSERT_TRUE(model.Ok());
        EXPECT_EQ(g_app.settings.PortName.view(), c.portName);
        EXPECT_EQ(g_app.gps.PortDevice.view(), c.device);
        EXPECT_EQ(g_app.settings.BaudRate, 2400u);
    }
    GpsSetupDialogModel model(g_app.gps, g_app.settings, NoDevices);
    EXPECT_EQ(model.PortText(), u"gpsd");  // a stored device comes back selected
    for (auto bad : {u"tcp:host", u"COM0:", u"ttyUSB0", u"tcp:h:70000"}) {
        model.SetPortText(bad);
        EXPECT_FALSE(model.Ok());
    }
    EXPECT_EQ(platform.Ui().Boxes().size(), 4u);
    EXPECT_EQ(g_app.gps.PortDevice.view(), u"gpsd");
}

TEST(GpsDataDialog, FormatsTheFix) {
    testing::TestPlatform platform;
    GpsFix fix;
    ParseRmc("$GPRMC,1,A,4807.038,N,01131.000,E,022.6,5.4,1,1.0,W", fix);
    g_app.gps.PublishedFix.Publish(fix);
    GpsDataDialogModel model;
    auto texts = model.Texts(g_app.gps);
    EXPECT_EQ(texts.position, u"  N48\u00B007.038 E011\u00B031.000");
    EXPECT_EQ(texts.speed, u"23 Kts");
    // 5.4 true with 1.0 W sent by the receiver: 6 magnetic, and it says so.
    EXPECT_EQ(texts.track, u"006\u00B0M");
    // A receiver that sends no variation: the model's at 48 N 11.5 E (about 4.5 E) instead.
    ParseRmc("$GPRMC,1,A,4807.038,N,01131.000,E,022.6,5.4,1,,", fix);
    g_app.gps.PublishedFix.Publish(fix);
    EXPECT_EQ(model.Texts(g_app.gps).track, u"001\u00B0M");
    model.Close();
    EXPECT_EQ(platform.Ui().Titles(), std::vector<std::string>{"Aerix"});
}

TEST(PortDeviceSetting, SurvivesARestart) {
    testing::TestPlatform platform;
    g_app.gps.PortDevice.assign(u"tcp:192.168.1.10:10110");
    ASSERT_TRUE(SavePortDevice(g_app.gps));
    platform.Restart();
    EXPECT_TRUE(g_app.gps.PortDevice.empty());
    LoadPortDevice(g_app.gps);
    EXPECT_EQ(g_app.gps.PortDevice.view(), u"tcp:192.168.1.10:10110");
    g_app.gps.PortDevice.clear();
    ASSERT_TRUE(SavePortDevice(g_app.gps));
    platform.Restart();
    LoadPortDevice(g_app.gps);
    EXPECT_TRUE(g_app.gps.PortDevice.empty());
}

}  // namespace
}  // namespace aerix
