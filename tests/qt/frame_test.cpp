#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>

#include "app/app_state.hpp"
#include "app/command_ids.hpp"
#include "qt/graphics/qt_graphics.hpp"
#include "qt/main_frame.hpp"
#include "qt/qt_ui.hpp"
#include "test_platform.hpp"

namespace aerix::qt {
namespace {

class AnsweringDialogs : public DialogHost {
  public:
    int Run(Dialog) override { return kDialogOk; }
};

class FrameTest : public ::testing::Test {
  protected:
    testing::TestPlatform platform_;
    platform::FixedMemoryStatus memory_{10};
    AnsweringDialogs dialogs_;
    MainFrame frame_{dialogs_, QString()};

    void SetUp() override {
        platform::Sys().memory = &memory_;
        platform_.Ui().ChooseNext(
            platform::FileDialogResult{platform_.Root() / "World.CDB", u"World.CDB"});
        ASSERT_TRUE(frame_.Logic().InitInstance());
    }
    void TearDown() override { frame_.Logic().Destroy(); }
    void Release(int key) {
        QKeyEvent event(QEvent::KeyRelease, key, Qt::NoModifier);
        QApplication::sendEvent(&frame_, &event);
    }
};

TEST_F(FrameTest, MenuMirrorsTheCommandStates) {
    for (const auto& e : MenuTable()) {
        QAction* action = frame_.ActionFor(e.id);
        ASSERT_NE(action, nullptr) << e.id;
        EXPECT_EQ(action->text().toStdString(), e.caption);
        EXPECT_EQ(action->isEnabled(), !e.greyedAtStart) << e.id;
    }
    frame_.ActionFor(cmd::kShowMap)->trigger();
    EXPECT_EQ(g_app.settings.ViewMode, static_cast<std::uint32_t>(kViewMap));
    frame_.ActionFor(cmd::kStartSimulation)->trigger();
    EXPECT_FALSE(frame_.ActionFor(cmd::kStartSimulation)->isEnabled());
    EXPECT_TRUE(frame_.ActionFor(cmd::kStopSimulation)->isEnabled());
    frame_.ActionFor(cmd::kStopSimulation)->trigger();
    EXPECT_TRUE(frame_.ActionFor(cmd::kStartSimulation)->isEnabled());
}

TEST_F(FrameTest, FunctionKeysAreTheHardwareButtons) {
    const std::pair<int, std::uint32_t> keys[] = {
        {Qt::Key_F2, kViewMap}, {Qt::Key_F1, kViewPlan}, {Qt::Key_F3, kViewInstruments}};
    for (auto [key, view] : keys) {
        Release(key);
        EXPECT_EQ(g_app.settings.ViewMode, view) << key;
    }
    EXPECT_EQ(g_app.view.InstrumentAerix, 1);
    Release(Qt::Key_F4);
    EXPECT_EQ(g_app.view.InstrumentAerix, 0);
    Release(Qt::Key_Up);
    EXPECT_EQ(g_app.view.InstrumentRangeStep, 2u);
    EXPECT_EQ(VirtualKeyFor(Qt::Key_Return), vk::kAction);
}

TEST_F(FrameTest, ChildWindowsSitAtTheirPlaces) {
    auto* view = frame_.View();
    EXPECT_EQ(view->findChild<QWidget*>("listBox")->geometry(), QRect(0, 59, 240, 90));
    EXPECT_EQ(view->findChild<QWidget*>("bottomStatus")->geometry(), QRect(0, 248, 240, 21));
    auto* latLon = view->findChild<QWidget*>("latLonReadout");
    EXPECT_EQ(latLon->geometry(), QRect(42, 44, 158, 16));
    EXPECT_TRUE(latLon->isHidden());
    g_app.settings.ShowLatLonHsi = 1;
    g_app.nav.ArraysPending = 0;
    frame_.Logic().OnCommand(cmd::kShowHsi);
    EXPECT_FALSE(latLon->isHidden());
    // The map draws its own readouts at the same place.
    frame_.Logic().OnCommand(cmd::kShowMap);
    EXPECT_TRUE(latLon->isHidden());
    EXPECT_EQ(frame_.size(), QSize(240, 320));
}

TEST_F(FrameTest, InstrumentViewsShowTheirDrawnFrame) {
    QtGraphics graphics;
    platform::Sys().graphics = &graphics;
    g_app.nav.ArraysPending = 0;
    GpsFix fix;
    fix.latitude = 51 * 6000.0;
    fix.groundSpeed = 90;
    fix.trueTrack = fix.magneticTrack = 45;
    g_app.gps.PublishedFix.Publish(fix);
    const struct {
        unsigned command;
        QPoint aircraft;  // the symbol's body at the drawing centre
        QPoint background;
        QColor backgroundColour;
    } views[] = {
        {cmd::kShowHsi, {120, 133}, {2, 120}, QColor(52, 54, 58)},
        {cmd::kShowAerix, {120, 107}, {2, 120}, QColor(8, 10, 16)},
    };
    for (const auto& v : views) {
        SCOPED_TRACE(v.command);
        frame_.Logic().OnCommand(v.command);
        // The first paint starts the drawing; once it is done the next paint shows it.
        frame_.View()->grab();
        frame_.Logic().Instruments().Wait();
        QImage shown = frame_.View()->grab().toImage();
        EXPECT_EQ(shown.pixelColor(v.background), v.backgroundColour);
        QColor body = shown.pixelColor(v.aircraft);
        EXPECT_GT(body.red(), 200);
        EXPECT_GT(body.green(), 120);
        EXPECT_LT(body.blue(), 80);
    }
    frame_.Logic().OnCommand(cmd::kShowPlan);
    platform::Sys().graphics = nullptr;
}

TEST(QtGraphicsTest, DrawsIntoBitmapsAndRefusesHugeImages) {
    QtGraphics graphics;
    platform::Bitmap bitmap(20, 10);
    graphics.CanvasOn(bitmap)->FillRect({5, 2, 10, 4}, platform::Rgb(255, 0, 0));
    EXPECT_EQ(bitmap.Pixel(6, 3), platform::Rgb(255, 0, 0));
    EXPECT_EQ(bitmap.Pixel(4, 3), platform::kWhite);

    testing::TempDir dir;
    auto file = (dir.Path() / "b.png").string();
    ASSERT_TRUE(graphics.SaveImage(file, bitmap));
    platform::Bitmap back;
    std::string error;
    ASSERT_TRUE(graphics.LoadImage(file, &back, &error)) << error;
    EXPECT_EQ(back.Pixel(6, 3), platform::Rgb(255, 0, 0));

    // Every kind of file ends as the same opaque pixels: 24- and 32-bit ones are decoded in
    // place, the others converted.
    const std::pair<QImage::Format, const char*> kinds[] = {
        {QImage::Format_RGB32, "png"},      {QImage::Format_ARGB32, "png"},
        {QImage::Format_Grayscale8, "png"}, {QImage::Format_RGB888, "bmp"},
        {QImage::Format_Indexed8, "bmp"},   {QImage::Format_RGB888, "jpg"},
    };
    for (auto [format, suffix] : kinds) {
        SCOPED_TRACE(std::string(suffix) + " " + std::to_string(format));
        QImage image(7, 5, QImage::Format_RGB32);
        image.fill(QColor(255, 255, 255));
        image.setPixelColor(3, 2, QColor(0, 0, 0));
        auto path = (dir.Path() / ("k." + std::string(suffix))).string();
        ASSERT_TRUE(image.convertToFormat(format).save(QString::fromStdString(path), nullptr, 100));
        ASSERT_TRUE(graphics.LoadImage(path, &back, &error)) << error;
        ASSERT_EQ(back.Width(), 7);
        ASSERT_EQ(back.Height(), 5);
        EXPECT_EQ(back.Row(0)[0] >> 24, 0u);
        EXPECT_GT(back.Pixel(0, 0).g, 240);
        EXPECT_LT(back.Pixel(3, 2).r, 40);
    }

    // A PNG header claiming 20000 x 20000 pixels.
    const char header[] =
        "\x89\x50\x4e\x47\x0d\x0a\x1a\x0a\x00\x00\x00\x0d\x49\x48\x44\x52\x00\x00\x4e\x20"
        "\x00\x00\x4e\x20\x08\x02\x00\x00\x00\x6c\x12\xd1\x6e"
        "\x00\x00\x00\x00IDAT\x35\xaf\x06\x1e\x00\x00\x00\x00IEND\xae\x42\x60\x82";
    auto huge = dir.Path() / "huge.png";
    testing::WriteFile(huge, std::string_view(header, sizeof header - 1));
    EXPECT_FALSE(graphics.LoadImage(huge.string(), &back, &error));
    EXPECT_NE(error.find("too large for memory"), std::string::npos) << error;
    // BMP and JPEG headers claiming 30000 x 30000 pixels (a JPEG after an APP0 segment) are
    // refused in the same words, before any decoding.
    std::string bmp("BM", 2);
    bmp += std::string(12, '\0');
    const unsigned char info[] = {40, 0, 0, 0, 0x30, 0x75, 0, 0, 0x30, 0x75, 0, 0, 1, 0, 24, 0};
    bmp += std::string(reinterpret_cast<const char*>(info), sizeof info);
    bmp += std::string(24 + 300, '\0');
    const unsigned char jpeg[] = {0xFF, 0xD8, 0xFF, 0xE0, 0,    16,   'J',  'F', 'I', 'F',  0,
                                  1,    1,    0,    0,    1,    0,    1,    0,   0,   0xFF, 0xC0,
                                  0,    11,   8,    0x75, 0x30, 0x75, 0x30, 1,   1,   0x11, 0};
    for (auto [name, bytes] :
         {std::pair{"huge.bmp", bmp},
          std::pair{"huge.jpg", std::string(reinterpret_cast<const char*>(jpeg), sizeof jpeg)}}) {
        SCOPED_TRACE(name);
        testing::WriteFile(dir.Path() / name, bytes);
        EXPECT_FALSE(graphics.LoadImage((dir.Path() / name).string(), &back, &error));
        EXPECT_NE(error.find("too large for memory (30000 x 30000 pixels)"), std::string::npos)
            << error;
    }
    EXPECT_FALSE(graphics.LoadImage((dir.Path() / "missing.png").string(), &back, &error));
}

TEST(QtUiTest, AutomaticBoxesAnswerFromTheScript) {
    QtUi ui;
    ui.SetAutomatic(true);
    EXPECT_EQ(ui.MessageBox("Reverse current plan?", "Warning", platform::kMbYesNo),
              platform::kIdNo);
    ui.AnswerNext(platform::kIdYes);
    EXPECT_EQ(ui.MessageBox("Reverse current plan?", "Warning", platform::kMbYesNo),
              platform::kIdYes);
    ui.AnswerNextFileWith("/data/My Documents/Aerix/Europe.CDB");
    auto chosen = ui.ChooseFile({});
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->title, u"Europe.CDB");
    EXPECT_FALSE(ui.ChooseFile({}));
    QLabel title;
    ui.Attach(
        nullptr, [&](const QString& t) { title.setText(t); }, nullptr);
    ui.SetTitle("Simulated GPS data");
    EXPECT_EQ(title.text(), "Simulated GPS data");
}

}  // namespace
}  // namespace aerix::qt
