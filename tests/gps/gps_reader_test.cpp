#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#include <future>

#include "app/app_state.hpp"
#include "feed_test_support.hpp"
#include "gps/feeds.hpp"
#include "gps/gps_port.hpp"
#include "gps/gps_reader.hpp"
#include "platform/serial_port.hpp"
#include "support/test_platform.hpp"

namespace aerix {
namespace {

using testing::Feeds;
using testing::PseudoTerminal;
using testing::WaitForFix;
using testing::WaitUntil;

const std::string kRmc = "$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W*6A\r\n";
const std::string kGga = "$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47\r\n";

class GpsReaderTest : public ::testing::Test {
  protected:
    GpsReaderTest() {
        g_app.settings.ViewMode = kViewMap;
        g_app.settings.BaudRate = 4800;
        g_app.gps.PortDevice.assign(Utf8ToUtf16(pty.SlavePath()));
    }
    ~GpsReaderTest() override { DisconnectGps(g_app.gps, g_app.settings); }
    std::string Recording() {
        return testing::ReadFile(platform.Data().Resolve("\\My Documents\\GpsData.txt"));
    }
    // One connection that delivers `bytes` (in pieces) and waits for the fix it gives.
    void Session(const std::vector<std::string>& pieces) {
        ASSERT_TRUE(ConnectGps(Feeds()));
        auto seen = g_app.gps.PublishedFix.Sequence();
        for (const auto& piece : pieces) {
            pty.Write(piece);
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        ASSERT_TRUE(WaitForFix(seen));
        DisconnectGps(g_app.gps, g_app.settings);
    }

    testing::TestPlatform platform;
    PseudoTerminal pty;
};

TEST_F(GpsReaderTest, AssemblesSplitSentencesRecordsRmcOnlyAndAppendsOrOverwrites) {
    g_app.settings.RecordGpsData = 1;
    g_app.settings.OverwriteGpsData = 0;
    Session({kGga.substr(0, 20), kGga.substr(20), kRmc.substr(0, 9), kRmc.substr(9, 30),
             kRmc.substr(39)});
    GpsFix fix = g_app.gps.PublishedFix.Snapshot();
    EXPECT_DOUBLE_EQ(fix.latitude, 288703.8);
    EXPECT_DOUBLE_EQ(fix.magneticTrack, 87.5);
    EXPECT_EQ(Recording(), kRmc);  // GPGGA neither recorded nor parsed
    EXPECT_EQ(platform.Ui().Titles(), (std::vector<std::string>{"Realtime GPS data", "Aerix"}));
    EXPECT_GE(platform.Idle().ResetCount(), 2);

    Session({kRmc});
    EXPECT_EQ(Recording(), kRmc + kRmc);  // a second connection appends

    g_app.settings.OverwriteGpsData = 1;
    Session({kRmc});
    EXPECT_EQ(Recording(), kRmc);
}

TEST_F(GpsReaderTest, SilenceGivesAVoidFixAndCloseEndsTheReader) {
    const char* step = nullptr;
    int error = 0;
    auto port =
        OpenPortSource(Utf8ToUtf16(pty.SlavePath()), g_app.settings.BaudRate, &step, &error);
    ASSERT_TRUE(port) << step << " " << error;
    auto seen = g_app.gps.PublishedFix.Sequence();
    std::jthread reader(GpsReaderThread, Feeds(), port, 20);
    pty.Write(kRmc);
    ASSERT_TRUE(WaitUntil([&] { return g_app.gps.PublishedFix.Snapshot().latitude != 0; }));
    ASSERT_TRUE(WaitUntil([&] { return g_app.gps.PublishedFix.Snapshot().FixVoid == 1; }));
    EXPECT_DOUBLE_EQ(g_app.gps.PublishedFix.Snapshot().latitude, 288703.8);  // kept
    EXPECT_GT(g_app.gps.PublishedFix.Sequence(), seen + 1);
    port->Close();
    reader.join();
    EXPECT_TRUE(platform.Ui().Boxes().empty());
}

TEST_F(GpsReaderTest, FarEndClosingIsReportedAndDisconnects) {
    std::promise<FeedCommand> command;
    ASSERT_TRUE(ConnectGps(Feeds([&](FeedCommand c) { command.set_value(c); })));
    pty.Write("$GPRMC,1234");
    pty.CloseMaster();
    auto future = command.get_future();
    ASSERT_EQ(future.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    EXPECT_EQ(future.get(), FeedCommand::DisconnectGps);
    auto boxes = platform.Ui().Boxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, "Communications Error 5 \r\nReading comms port.");
    EXPECT_EQ(boxes[0].caption, "");
    DisconnectGps(g_app.gps, g_app.settings);  // what the main window does with the command
    EXPECT_EQ(g_app.gps.GpsPort, nullptr);
    EXPECT_EQ(g_app.settings.GpsSource, kSourceNone);
}

TEST_F(GpsReaderTest, ConnectReplacesARunningSimulation) {
    ASSERT_TRUE(StartSimulation(Feeds()));
    Session({kRmc});
    EXPECT_EQ(platform.Ui().Titles(),
              (std::vector<std::string>{"Simulated GPS data", "Realtime GPS data", "Aerix"}));
    EXPECT_FALSE(g_app.gps.GpsThread.joinable());
}

TEST_F(GpsReaderTest, OpenFailuresAreReportedWithTheirStep) {
    struct Case {
        std::u16string port;
        std::string box;
    } cases[] = {
        {u"/dev/aerix-no-such-port", "Communications Error 2 \r\nOpening Comms Port."},
        {u"NavM", "Communications Error 19 \r\nOpening Navman Port."},
        {u"tcp:127.0.0.1:1", "Communications Error 111 \r\nOpening Comms Port."},
    };
    for (const auto& c : cases) {
        platform.Ui().Clear();
        SetConfiguredPortName(g_app.gps, g_app.settings, c.port);
        EXPECT_FALSE(ConnectGps(Feeds()));
        EXPECT_EQ(platform.Ui().BoxTexts(), std::vector<std::string>{c.box});
        EXPECT_EQ(g_app.settings.GpsSource, kSourceNone);
        EXPECT_EQ(g_app.gps.GpsPort, nullptr);
    }
}

TEST_F(GpsReaderTest, NavmanIsFoundInTheActiveDriversAndRunsAt57600) {
    auto& hive = platform.Registry();
    auto setKey = [&](std::u16string path, std::u16string key, std::u16string name) {
        platform::HKEY k = 0;
        std::uint32_t disposition = 0;
        hive.CreateKey(platform::kHkeyLocalMachine, path, &k, &disposition);
        hive.SetValue(k, u"Key", platform::kRegSz, key.c_str(),
                      static_cast<std::uint32_t>((key.size() + 1) * 2));
        hive.SetValue(k, u"Name", platform::kRegSz, name.c_str(),
                      static_cast<std::uint32_t>((name.size() + 1) * 2));
        hive.CloseKey(k);
    };
    setKey(u"Drivers\\Active\\01", u"Drivers\\BuiltIn\\Serial", u"/dev/null");
    setKey(u"Drivers\\Active\\02", u"Drivers\\OptPack\\0100", Utf8ToUtf16(pty.SlavePath()));
    char16_t buffer[64];
    ASSERT_EQ(FindNavmanPort(buffer, 64), 1);
    EXPECT_EQ(std::u16string(buffer), Utf8ToUtf16(pty.SlavePath()));

    SetConfiguredPortName(g_app.gps, g_app.settings, u"NavM");
    g_app.settings.BaudRate = 1200;
    Session({kRmc});
    EXPECT_EQ(g_app.settings.BaudRate, 57600u);
    EXPECT_TRUE(platform.Ui().Boxes().empty());
}

TEST_F(GpsReaderTest, ComNamesMapThroughThePortsKey) {
    platform::HKEY k = 0;
    std::uint32_t disposition = 0;
    platform.Registry().CreateKey(platform::kHkeyLocalMachine,
                                  u"Software\\Qorvane Software\\Aerix\\Ports", &k, &disposition);
    std::u16string usb = u"/dev/ttyUSB0";
    platform.Registry().SetValue(k, u"COM2:", platform::kRegSz, usb.c_str(),
                                 static_cast<std::uint32_t>((usb.size() + 1) * 2));
    platform.Registry().CloseKey(k);
    EXPECT_EQ(platform::SerialDevicePath(u"COM2:"), "/dev/ttyUSB0");
    EXPECT_EQ(platform::SerialDevicePath(u"COM3:"), "/dev/ttyS2");
    EXPECT_EQ(platform::SerialDevicePath(u"/dev/pts/7"), "/dev/pts/7");
    EXPECT_EQ(platform::SerialDevicePath(u"COM0:"), "");
}

TEST_F(GpsReaderTest, TcpFeedGoesThroughTheSameReader) {
    int server = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ASSERT_EQ(::bind(server, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(::listen(server, 1), 0);
    socklen_t length = sizeof address;
    ::getsockname(server, reinterpret_cast<sockaddr*>(&address), &length);
    SetConfiguredPortName(g_app.gps, g_app.settings,
                          Utf8ToUtf16("tcp:127.0.0.1:" + std::to_string(ntohs(address.sin_port))));
    auto seen = g_app.gps.PublishedFix.Sequence();
    ASSERT_TRUE(ConnectGps(Feeds()));
    int client = ::accept(server, nullptr, nullptr);
    ASSERT_GE(client, 0);
    ASSERT_EQ(::write(client, kRmc.data(), kRmc.size()), static_cast<ssize_t>(kRmc.size()));
    ASSERT_TRUE(WaitForFix(seen));
    EXPECT_DOUBLE_EQ(g_app.gps.PublishedFix.Snapshot().longitude, 69100.0);
    DisconnectGps(g_app.gps, g_app.settings);
    ::close(client);
    ::close(server);
}

}  // namespace
}  // namespace aerix
