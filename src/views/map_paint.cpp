// Centring the chart on the fix and painting the MAP view.
#include "app/state/app_state.hpp"
#include "gps/fix_publication.hpp"
#include "platform/message_box.hpp"
#include "platform/numeric.hpp"
#include "views/map_geometry.hpp"
#include "views/map_view.hpp"
#include "views/plan_sectors.hpp"

namespace aerix {

using platform::Rect;

namespace {

constexpr int kChartBottom = kChartTop + kChartSize;

// One axis of the centring: the chart pixel drawn at the anchor and where the aircraft goes. At
// zoom 1 the chart stops at its edges and the aircraft moves off the anchor instead.
void CentreAxis(int pixel, int anchor, int slack, int size, std::int32_t& centre,
                std::int32_t& aircraft) {
    centre = pixel;
    aircraft = anchor;
    if (g_app.view.MapZoom != 1.0)
        return;
    if (pixel < anchor) {
        centre = anchor;
        aircraft = pixel;
    }
    int limit = slack + size - 120;
    if (pixel > limit) {
        centre = limit;
        aircraft = anchor - limit + pixel;
    }
}

// Source span of the edge test by zoom; 1.0 and 2.0 share 120.
int EdgeSpan(double zoom) {
    if (zoom == 0.25)
        return 960;
    if (zoom <= 0.5)
        return 480;
    if (zoom == 4.0)
        return 60;
    return 120;
}

void BlankBeyondChart(platform::Canvas& view, double left, double top) {
    const double zoom = g_app.view.MapZoom;
    const int span = EdgeSpan(zoom);
    view.SetBrush({false, platform::kWhite});
    view.SetPen({platform::PenStyle::Solid, 1, platform::kWhite});
    if (left + span > g_app.view.MapWidth)
        view.Rectangle({240 - TruncInt32((left + span - g_app.view.MapWidth) * zoom), kChartTop, 240,
                        kChartBottom});
    if (left < 0)
        view.Rectangle({0, kChartTop, TruncInt32(-left * zoom), kChartBottom});
    if (top < 0)
        view.Rectangle({0, kChartTop, 240, TruncInt32(kChartTop - top * zoom)});
    if (top + span > g_app.view.MapHeight)
        view.Rectangle({0, kChartBottom - TruncInt32((top + span - g_app.view.MapHeight) * zoom), 240,
                        kChartBottom});
    view.SetPen({});
    view.SetBrush({});
}

void DrawLatLonReadout(MapReadouts& readouts) {
    platform::Canvas* dc = readouts.BeginLatLon();
    if (dc == nullptr)
        return;
    // The 24 characters of the position must fit the 156-pixel readout.
    dc->SetFont({10, false});
    dc->DrawText(g_app.gps.Fix.positionKnown ? g_app.gps.Fix.positionText.utf8() : kNoFixText,
                 {0, 0, 156, 16},
                 platform::kTextCenter | platform::kTextVCenter | platform::kTextSingleLine,
                 kReadoutText, kReadoutBack, false);
    if (!readouts.EndLatLon())
        platform::ShowError(kReleaseInfoDcText);
}

}  // namespace

void CenterMapOnPosition(platform::Canvas& view, MapReadouts* readouts, double longitude,
                         double latitude) {
    // The first real fix chooses its chart even when the one shown before it contains it (the
    // world chart shown around the plan's start, say).
    const bool firstFix = g_app.view.MapAwaitingFix && g_app.gps.Fix.positionKnown;
    if (g_app.gps.Fix.positionKnown)
        g_app.view.MapAwaitingFix = false;
    if (firstFix || g_app.view.MapChangeRequest != 0 ||
        !MapContains(g_app.view.MapCalibration, longitude, latitude))
        SelectMapForPosition();
    int column = MapColumn(g_app.view.MapCalibration, longitude);
    int row = MapRow(g_app.view.MapCalibration, latitude);
    CentreAxis(column, g_app.view.AnchorX, g_app.view.MapSlackX, g_app.view.MapWidth, g_app.view.MapCenterX,
               g_app.view.AircraftScreenX);
    CentreAxis(row, g_app.view.AnchorY, g_app.view.MapSlackY, g_app.view.MapHeight, g_app.view.MapCenterY,
               g_app.view.AircraftScreenY);
    PaintMapView(view, readouts, 1);
}

void PaintMapView(platform::Canvas& view, MapReadouts* readouts, int /*fromCentering*/) {
    const double zoom = g_app.view.MapZoom;
    const double left = g_app.view.MapCenterX - g_app.view.AnchorX / zoom;
    const double top = g_app.view.MapCenterY - g_app.view.AnchorY / zoom;
    const int size = TruncInt32(240 / zoom);
    const Rect chart{0, kChartTop, kChartSize, kChartBottom};
    std::vector<SectorRecord> sectors;
    if (g_app.settings.ViewMode == kViewMap) {
        sectors = ReadPlanSectors();
        RefreshBurntRoute(sectors);
    }
    if (g_app.view.MapLoaded) {
        int x = TruncInt32(left);
        int y = TruncInt32(top);
        view.StretchBlt(chart, g_app.view.MapBitmap, {x, y, x + size, y + size});
    } else {
        view.FillRect(chart, platform::kWhite);
    }
    BlankBeyondChart(view, left, top);

    if (g_app.gps.Fix.FixVoid)
        g_app.view.InvalidSignalPending = 1;
    if (g_app.view.InvalidSignalPending == 1) {
        g_app.view.InvalidSignalPending = 0;
        AcknowledgeVoidFix(g_app.gps);
        view.SetFont({12, true});
        view.DrawText(kInvalidSignalText, {0, 100, 240, 130},
                      platform::kTextCenter | platform::kTextVCenter | platform::kTextSingleLine,
                      platform::Rgb(255, 0, 0), platform::kWhite, false);
        return;
    }
    if (g_app.settings.ViewMode != kViewMap)
        return;
    UpdateActiveLeg(view, sectors);
    // Before the first fix there is no aircraft to show, only the chart and "NO FIX".
    if (g_app.gps.Fix.positionKnown) {
        DrawAircraftSymbol(view);
    } else {
        view.SetFont({12, true});
        view.DrawText(kNoFixText, {60, 120, 180, 140},
                      platform::kTextCenter | platform::kTextVCenter | platform::kTextSingleLine,
                      platform::Rgb(255, 0, 0), platform::kWhite, false);
    }
    if (readouts == nullptr)
        return;
    if (g_app.settings.ShowLatLonMap == 1)
        DrawLatLonReadout(*readouts);
    if (g_app.settings.ShowScaleMap == 1)
        DrawScaleBar(*readouts);
}

}  // namespace aerix
