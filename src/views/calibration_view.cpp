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
    g_app.AnchorX = g_app.AnchorY = 120;
    g_app.MapSlackX = g_app.MapSlackY = 0;
}

void PaintCalibrationView(platform::Canvas& view) {
    PaintMapView(view, nullptr, 0);
    const int x = g_app.AircraftScreenX;
    const int y = g_app.AircraftScreenY;
    DrawCross(view, x, y);
    const unsigned format =
        platform::kTextCenter | platform::kTextVCenter | platform::kTextSingleLine;
    view.SetFont({11, false});
    // Short enough for the 240-pixel width in the 11-pixel font.
    view.DrawText("Drag a known point under the cross", {0, 0, 240, 14}, format, platform::kBlack,
                  platform::Rgb(255, 255, 0), false);
    char text[96];
    std::snprintf(text, sizeof text, "x %d  y %d   NE %s   SW %s",
                  g_app.MapCenterX - g_app.AnchorX + x, g_app.MapCenterY - g_app.AnchorY + y - 14,
                  g_app.CalibrationFirstDone ? "set" : "-",
                  g_app.CalibrationSecondDone ? "set" : "-");
    view.DrawText(text, {0, 254, 240, 268}, format, platform::kWhite, platform::Rgb(0, 0, 96),
                  false);
}

void CalibrationPenDown(int x, int y) {
    g_lastPen = {x, y};
}

void CalibrationPenMove(int x, int y) {
    const double zoom = g_app.MapZoom > 0 ? g_app.MapZoom : 1.0;
    g_app.MapCenterX -= static_cast<int>((x - g_lastPen.x) / zoom);
    g_app.MapCenterY -= static_cast<int>((y - g_lastPen.y) / zoom);
    // The cross can reach every pixel of the bitmap, no further.
    const int offX = g_app.AircraftScreenX - g_app.AnchorX;
    const int offY = g_app.AircraftScreenY - g_app.AnchorY - 14;
    g_app.MapCenterX =
        std::clamp(g_app.MapCenterX, -offX, std::max(-offX, g_app.MapWidth - 1 - offX));
    g_app.MapCenterY =
        std::clamp(g_app.MapCenterY, -offY, std::max(-offY, g_app.MapHeight - 1 - offY));
    g_lastPen = {x, y};
}

}  // namespace aerix
