#include "views/calibration_view.hpp"

#include <algorithm>
#include <cstdio>

#include "app/state/app_state.hpp"
#include "views/map_view.hpp"

namespace aerix {

namespace {
platform::Point g_lastPen;

void DrawCross(platform::Canvas& view, int x, int y) {
    // Black with a white edge so it shows on any chart.
    view.SetPen({platform::PenStyle::Solid, 3, platform::kWhite});
    view.MoveTo(x - 12, y);
    view.LineTo(x + 13, y);
    view.MoveTo(x, y - 12);
    view.LineTo(x, y + 13);
    view.SetPen({platform::PenStyle::Solid, 1, platform::Rgb(255, 0, 0)});
    view.MoveTo(x - 12, y);
    view.LineTo(x + 13, y);
    view.MoveTo(x, y - 12);
    view.LineTo(x, y + 13);
    view.SetPen({});
}
}  // namespace

void BeginCalibrationView() {
    g_app.view.AnchorX = g_app.view.AnchorY = 120;
    g_app.view.MapSlackX = g_app.view.MapSlackY = 0;
}

void PaintCalibrationView(platform::Canvas& view) {
    PaintMapView(view, nullptr, 0);
    const int x = g_app.view.AircraftScreenX;
    const int y = g_app.view.AircraftScreenY;
    DrawCross(view, x, y);
    const unsigned format =
        platform::kTextCenter | platform::kTextVCenter | platform::kTextSingleLine;
    view.SetFont({11, false});
    // Short enough for the 240-pixel width in the 11-pixel font.
    view.DrawText("Drag a known point under the cross", {0, 0, 240, 14}, format, platform::kBlack,
                  platform::Rgb(255, 255, 0), false);
    char text[96];
    std::snprintf(text, sizeof text, "x %d  y %d   NE %s   SW %s",
                  g_app.view.MapCenterX - g_app.view.AnchorX + x, g_app.view.MapCenterY - g_app.view.AnchorY + y - 14,
                  g_app.view.CalibrationFirstDone ? "set" : "-",
                  g_app.view.CalibrationSecondDone ? "set" : "-");
    view.DrawText(text, {0, 254, 240, 268}, format, platform::kWhite, platform::Rgb(0, 0, 96),
                  false);
}

void CalibrationPenDown(int x, int y) {
    g_lastPen = {x, y};
}

void CalibrationPenMove(int x, int y) {
    const double zoom = g_app.view.MapZoom > 0 ? g_app.view.MapZoom : 1.0;
    g_app.view.MapCenterX -= static_cast<int>((x - g_lastPen.x) / zoom);
    g_app.view.MapCenterY -= static_cast<int>((y - g_lastPen.y) / zoom);
    // The cross can reach every pixel of the bitmap, no further.
    const int offX = g_app.view.AircraftScreenX - g_app.view.AnchorX;
    const int offY = g_app.view.AircraftScreenY - g_app.view.AnchorY - 14;
    g_app.view.MapCenterX =
        std::clamp(g_app.view.MapCenterX, -offX, std::max(-offX, g_app.view.MapWidth - 1 - offX));
    g_app.view.MapCenterY =
        std::clamp(g_app.view.MapCenterY, -offY, std::max(-offY, g_app.view.MapHeight - 1 - offY));
    g_lastPen = {x, y};
}

}  // namespace aerix
