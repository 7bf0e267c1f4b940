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
    if (g_app.MapZoom != 1.0)
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
    const double zoom = g_app.MapZoom;
    const int span = EdgeSpan(zoom);
    view.SetBrush({false, platform::kWhite});
    view.SetPen({platform::PenStyle::Solid, 1, platform::kWhite});
    if (left + span > g_app.MapWidth)
        view.Rectangle({240 - TruncInt32((left + span - g_app.MapWidth) * zoom), kChartTop, 240,
                        kChartBottom});
    if (left < 0)
        view.Rectangle({0, kChartTop, TruncInt32(-left * zoom), kChartBottom});
    if (top < 0)
        view.Rectangle({0, kChartTop, 240, TruncInt32(kChartTop - top * zoom)});
    if (top + span > g_app.MapHeight)
        view.Rectangle({0, kChartBottom - TruncInt32((top + span - g_app.MapHeight) * zoom), 240,
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
    dc->DrawText(g_app.Fix.positionKnown ? g_app.Fix.positionText.utf8() : kNoFixText,
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
    const bool firstFix = g_app.MapAwaitingFix && g_app.Fix.positionKnown;
    if (g_app.Fix.positionKnown)
        g_app.MapAwaitingFix = false;
    if (firstFix || g_app.MapChangeRequest != 0 ||
        !MapContains(g_app.MapCalibration, longitude, latitude))
        SelectMapForPosition();
    int column = MapColumn(g_app.MapCalibration, longitude);
    int row = MapRow(g_app.MapCalibration, latitude);
    CentreAxis(column, g_app.AnchorX, g_app.MapSlackX, g_app.MapWidth, g_app.MapCenterX,
               g_app.AircraftScreenX);
    CentreAxis(row, g_app.AnchorY, g_app.MapSlackY, g_app.MapHeight, g_app.MapCenterY,
               g_app.AircraftScreenY);
    PaintMapView(view, readouts, 1);
}

void PaintMapView(platform::Canvas& view, MapReadouts* readouts, int /*fromCentering*/) {
    const double zoom = g_app.MapZoom;
    const double left = g_app.MapCenterX - g_app.AnchorX / zoom;
    const double top = g_app.MapCenterY - g_app.AnchorY / zoom;
    const int size = TruncInt32(240 / zoom);
    const Rect chart{0, kChartTop, kChartSize, kChartBottom};
    std::vector<SectorRecord> sectors;
    if (g_app.ViewMode == kViewMap) {
        sectors = ReadPlanSectors();
        RefreshBurntRoute(sectors);
    }
    if (g_app.MapLoaded) {
        int x = TruncInt32(left);
        int y = TruncInt32(top);
        view.StretchBlt(chart, g_app.MapBitmap, {x, y, x + size, y + size});
    } else {
        view.FillRect(chart, platform::kWhite);
    }
    BlankBeyondChart(view, left, top);

    if (g_app.Fix.FixVoid)
        g_app.InvalidSignalPending = 1;
    if (g_app.InvalidSignalPending == 1) {
        g_app.InvalidSignalPending = 0;
        AcknowledgeVoidFix();
        view.SetFont({12, true});
        view.DrawText(kInvalidSignalText, {0, 100, 240, 130},
                      platform::kTextCenter | platform::kTextVCenter | platform::kTextSingleLine,
                      platform::Rgb(255, 0, 0), platform::kWhite, false);
        return;
    }
    if (g_app.ViewMode != kViewMap)
        return;
    UpdateActiveLeg(view, sectors);
    // Before the first fix there is no aircraft to show, only the chart and "NO FIX".
    if (g_app.Fix.positionKnown) {
        DrawAircraftSymbol(view);
    } else {
        view.SetFont({12, true});
        view.DrawText(kNoFixText, {60, 120, 180, 140},
                      platform::kTextCenter | platform::kTextVCenter | platform::kTextSingleLine,
                      platform::Rgb(255, 0, 0), platform::kWhite, false);
    }
    if (readouts == nullptr)
        return;
    if (g_app.ShowLatLonMap == 1)
        DrawLatLonReadout(*readouts);
    if (g_app.ShowScaleMap == 1)
        DrawScaleBar(*readouts);
}

}  // namespace aerix
