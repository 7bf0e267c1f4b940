#include "views/calibration_view.hpp"

#include <algorithm>
#include <cstdio>

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

void BeginCalibrationView(ViewState& view) {
    view.AnchorX = view.AnchorY = 120;
    view.MapSlackX = view.MapSlackY = 0;
}

void PaintCalibrationView(platform::Canvas& canvas, const ViewInputs& in) {
    PaintMapView(canvas, nullptr, in, 0);
    const ViewState& view = in.view;
    const int x = view.AircraftScreenX;
    const int y = view.AircraftScreenY;
    DrawCross(canvas, x, y);
    const unsigned format =
        platform::kTextCenter | platform::kTextVCenter | platform::kTextSingleLine;
    canvas.SetFont({11, false});
    // Short enough for the 240-pixel width in the 11-pixel font.
    canvas.DrawText("Drag a known point under the cross", {0, 0, 240, 14}, format, platform::kBlack,
                    platform::Rgb(255, 255, 0), false);
    char text[96];
    std::snprintf(text, sizeof text, "x %d  y %d   NE %s   SW %s",
                  view.MapCenterX - view.AnchorX + x, view.MapCenterY - view.AnchorY + y - 14,
                  view.CalibrationFirstDone ? "set" : "-",
                  view.CalibrationSecondDone ? "set" : "-");
    canvas.DrawText(text, {0, 254, 240, 268}, format, platform::kWhite, platform::Rgb(0, 0, 96),
                    false);
}

void CalibrationPenDown(int x, int y) {
    g_lastPen = {x, y};
}

void CalibrationPenMove(ViewState& view, int x, int y) {
    const double zoom = view.MapZoom > 0 ? view.MapZoom : 1.0;
    view.MapCenterX -= static_cast<int>((x - g_lastPen.x) / zoom);
    view.MapCenterY -= static_cast<int>((y - g_lastPen.y) / zoom);
    // The cross can reach every pixel of the bitmap, no further.
    const int offX = view.AircraftScreenX - view.AnchorX;
    const int offY = view.AircraftScreenY - view.AnchorY - 14;
    view.MapCenterX = std::clamp(view.MapCenterX, -offX, std::max(-offX, view.MapWidth - 1 - offX));
    view.MapCenterY =
        std::clamp(view.MapCenterY, -offY, std::max(-offY, view.MapHeight - 1 - offY));
    g_lastPen = {x, y};
}

}  // namespace aerix
