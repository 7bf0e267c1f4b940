// Centring the chart on the fix and painting the MAP view.
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
void CentreAxis(double zoom, int pixel, int anchor, int slack, int size, std::int32_t& centre,
                std::int32_t& aircraft) {
    centre = pixel;
    aircraft = anchor;
    if (zoom != 1.0)
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

void BlankBeyondChart(platform::Canvas& view, const ViewState& state, double left, double top) {
    const double zoom = state.MapZoom;
    const int span = EdgeSpan(zoom);
    view.SetBrush({false, platform::kWhite});
    view.SetPen({platform::PenStyle::Solid, 1, platform::kWhite});
    if (left + span > state.MapWidth)
        view.Rectangle({240 - TruncInt32((left + span - state.MapWidth) * zoom), kChartTop, 240,
                        kChartBottom});
    if (left < 0)
        view.Rectangle({0, kChartTop, TruncInt32(-left * zoom), kChartBottom});
    if (top < 0)
        view.Rectangle({0, kChartTop, 240, TruncInt32(kChartTop - top * zoom)});
    if (top + span > state.MapHeight)
        view.Rectangle({0, kChartBottom - TruncInt32((top + span - state.MapHeight) * zoom), 240,
                        kChartBottom});
    view.SetPen({});
    view.SetBrush({});
}

void DrawLatLonReadout(MapReadouts& readouts, const GpsFix& fix) {
    platform::Canvas* dc = readouts.BeginLatLon();
    if (dc == nullptr)
        return;
    // The 24 characters of the position must fit the 156-pixel readout.
    dc->SetFont({10, false});
    dc->DrawText(fix.positionKnown ? fix.positionText.utf8() : kNoFixText, {0, 0, 156, 16},
                 platform::kTextCenter | platform::kTextVCenter | platform::kTextSingleLine,
                 kReadoutText, kReadoutBack, false);
    if (!readouts.EndLatLon())
        platform::ShowError(kReleaseInfoDcText);
}

}  // namespace

void CenterMapOnPosition(platform::Canvas& view, MapReadouts* readouts, const ViewInputs& in,
                         double longitude, double latitude) {
    ViewState& state = in.view;
    const GpsFix& fix = in.gps.Fix;
    // The first real fix chooses its chart even when the one shown before it contains it (the
    // world chart shown around the plan's start, say).
    const bool firstFix = state.MapAwaitingFix && fix.positionKnown;
    if (fix.positionKnown)
        state.MapAwaitingFix = false;
    if (firstFix || state.MapChangeRequest != 0 ||
        !MapContains(state.MapCalibration, longitude, latitude))
        SelectMapForPosition(in);
    int column = MapColumn(state.MapCalibration, longitude);
    int row = MapRow(state.MapCalibration, latitude);
    CentreAxis(state.MapZoom, column, state.AnchorX, state.MapSlackX, state.MapWidth,
               state.MapCenterX, state.AircraftScreenX);
    CentreAxis(state.MapZoom, row, state.AnchorY, state.MapSlackY, state.MapHeight,
               state.MapCenterY, state.AircraftScreenY);
    PaintMapView(view, readouts, in, 1);
}

void PaintMapView(platform::Canvas& view, MapReadouts* readouts, const ViewInputs& in,
                  int /*fromCentering*/) {
    ViewState& state = in.view;
    const SettingsState& settings = in.settings;
    const GpsFix& fix = in.gps.Fix;
    const double zoom = state.MapZoom;
    const double left = state.MapCenterX - state.AnchorX / zoom;
    const double top = state.MapCenterY - state.AnchorY / zoom;
    const int size = TruncInt32(240 / zoom);
    const Rect chart{0, kChartTop, kChartSize, kChartBottom};
    std::vector<SectorRecord> sectors;
    if (settings.ViewMode == kViewMap) {
        sectors = ReadPlanSectors(settings);
        RefreshBurntRoute(state, settings, in.leg, sectors);
    }
    if (state.MapLoaded) {
        int x = TruncInt32(left);
        int y = TruncInt32(top);
        view.StretchBlt(chart, state.MapBitmap, {x, y, x + size, y + size});
    } else {
        view.FillRect(chart, platform::kWhite);
    }
    BlankBeyondChart(view, state, left, top);

    if (fix.FixVoid)
        state.InvalidSignalPending = 1;
    if (state.InvalidSignalPending == 1) {
        state.InvalidSignalPending = 0;
        AcknowledgeVoidFix(in.gps);
        view.SetFont({12, true});
        view.DrawText(kInvalidSignalText, {0, 100, 240, 130},
                      platform::kTextCenter | platform::kTextVCenter | platform::kTextSingleLine,
                      platform::Rgb(255, 0, 0), platform::kWhite, false);
        return;
    }
    if (settings.ViewMode != kViewMap)
        return;
    UpdateActiveLeg(view, in, sectors);
    // Before the first fix there is no aircraft to show, only the chart and "NO FIX".
    if (fix.positionKnown) {
        DrawAircraftSymbol(view, state, settings, fix);
    } else {
        view.SetFont({12, true});
        view.DrawText(kNoFixText, {60, 120, 180, 140},
                      platform::kTextCenter | platform::kTextVCenter | platform::kTextSingleLine,
                      platform::Rgb(255, 0, 0), platform::kWhite, false);
    }
    if (readouts == nullptr)
        return;
    if (settings.ShowLatLonMap == 1)
        DrawLatLonReadout(*readouts, fix);
    if (settings.ShowScaleMap == 1)
        DrawScaleBar(*readouts, state);
}

}  // namespace aerix
