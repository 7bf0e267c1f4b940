// The calibration screens on the 240 x 320 screen: every box of the Calibrate dialog shows what a
// pilot types into it, and the calibration banner is not cut at the screen's edges.
#include <QFontMetrics>
#include <QPushButton>

#include "dialog_driver.hpp"
#include "qt/graphics/qt_graphics.hpp"
#include "views/calibration_view.hpp"

namespace aerix::qt {
namespace {

using CalibrationLayoutTest = DialogTest;

TEST_F(CalibrationLayoutTest, CalibrateBoxesFitSideBySide) {
    WhenShown([](QWidget* d) {
        const char* names[] = {"latDeg", "latMin", "latHemisphere",
                               "lonDeg", "lonMin", "lonHemisphere"};
        std::vector<QRect> boxes;
        for (const char* name : names) {
            auto* w = Find<QWidget>(d, name);
            QRect r(w->mapTo(d, QPoint(0, 0)), w->size());
            EXPECT_LE(r.right(), 239) << name;
            for (const QRect& other : boxes)
                EXPECT_FALSE(r.intersects(other)) << name;
            boxes.push_back(r);
        }
        for (const char* minutes : {"latMin", "lonMin"}) {
            auto* entry = Find<QLineEdit>(d, minutes);
            EXPECT_LE(entry->fontMetrics().horizontalAdvance(QStringLiteral("59.999")),
                      entry->width() - 8)
                << minutes;
        }
        auto* degrees = Find<QLineEdit>(d, "lonDeg");
        EXPECT_LE(degrees->fontMetrics().horizontalAdvance(QStringLiteral("-179")),
                  degrees->width() - 8);
        Click(d, "close");
    });
    host_.Run(Dialog::Calibrate);
}

TEST_F(CalibrationLayoutTest, BannerTextStaysInsideTheScreen) {
    QtGraphics graphics;
    platform::Sys().graphics = &graphics;
    platform::Bitmap screen(240, 320);
    auto canvas = graphics.CanvasOn(screen);
    BeginCalibrationView(g_app.view);
    g_app.view.AircraftScreenX = g_app.view.AircraftScreenY = 120;
    PaintCalibrationView(*canvas, {g_app.view, g_app.settings, g_app.gps, g_app.leg});
    canvas.reset();
    platform::Sys().graphics = nullptr;
    const platform::Color yellow = platform::Rgb(255, 255, 0);
    int inked = 0, atTheEdges = 0;
    for (int y = 0; y < 14; ++y) {
        for (int x = 0; x < 240; ++x) {
            if (screen.Pixel(x, y) == yellow)
                continue;
            ++inked;
            if (x < 3 || x > 236)
                ++atTheEdges;
        }
    }
    EXPECT_EQ(atTheEdges, 0);
    EXPECT_GT(inked, 100);  // the banner's text is there
}

}  // namespace
}  // namespace aerix::qt
