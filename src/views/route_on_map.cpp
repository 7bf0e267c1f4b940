// The plan route burnt into the chart: a magenta band with a dashed black centre line.
#include "app/state/app_state.hpp"
#include "platform/numeric.hpp"
#include "platform/services.hpp"
#include "views/map_geometry.hpp"
#include "views/map_view.hpp"
#include "views/plan_sectors.hpp"

namespace aerix {

namespace {

platform::Point ChartPoint(double latitude, double longitude) {
    const MapCalibrationValues& c = g_app.view.MapCalibration;
    return {TruncInt32(MapColumnExact(c, longitude * (1.0 / 6000.0)) + 0.5),
            TruncInt32(MapRowExact(c, latitude * (1.0 / 6000.0)) + 0.5)};
}

void DrawBand(platform::Canvas& map, const std::vector<platform::Point>& points) {
    map.SetPen({platform::PenStyle::Solid, 5, platform::Rgb(255, 0, 255)});
    map.Polyline(points);
    map.SetPen({platform::PenStyle::Dash, 1, platform::kBlack});
    map.Polyline(points);
}

}  // namespace

std::vector<std::int32_t> RouteToBurn(const std::vector<SectorRecord>& sectors) {
    std::vector<std::int32_t> route;
    route.reserve(sectors.size() * 4 + 4);
    for (const SectorRecord& s : sectors)
        route.insert(route.end(),
                     {s.StartLatitude, s.StartLongitude, s.EndLatitude, s.EndLongitude});
    if (g_app.leg.DirectToStartLatitude.load() != 0)
        route.insert(route.end(),
                     {g_app.leg.DirectToStartLatitude.load(), g_app.leg.DirectToStartLongitude.load(),
                      g_app.leg.DirectToTargetLatitude, g_app.leg.DirectToTargetLongitude});
    return route;
}

void DrawRouteOnMap(platform::Canvas& map) {
    std::vector<SectorRecord> sectors = ReadPlanSectors();
    std::vector<platform::Point> points;
    points.reserve(sectors.size() * 2);
    for (const SectorRecord& s : sectors) {
        points.push_back(ChartPoint(s.StartLatitude, s.StartLongitude));
        points.push_back(ChartPoint(s.EndLatitude, s.EndLongitude));
    }
    if (!points.empty())
        DrawBand(map, points);
    // The direct-to leg runs from where it was chosen to its own waypoint.
    if (g_app.leg.DirectToStartLatitude.load() != 0) {
        DrawBand(map, {ChartPoint(g_app.leg.DirectToStartLatitude.load(),
                                  g_app.leg.DirectToStartLongitude.load()),
                       ChartPoint(g_app.leg.DirectToTargetLatitude, g_app.leg.DirectToTargetLongitude)});
    }
    map.SetPen({});
    g_app.view.MapBurntRoute = RouteToBurn(sectors);
    g_app.view.MapRouteBurnt = true;
}

void RefreshBurntRoute(const std::vector<SectorRecord>& sectors) {
    if (!g_app.view.MapLoaded || g_app.settings.ViewMode != kViewMap)
        return;
    if (g_app.view.MapRouteBurnt && g_app.view.MapBurntRoute == RouteToBurn(sectors))
        return;
    // The chart's own pixels are on disk only: load it again and burn the route afresh,
    // keeping where the view was centred.
    const std::int32_t centreX = g_app.view.MapCenterX, centreY = g_app.view.MapCenterY;
    const std::int32_t aircraftX = g_app.view.AircraftScreenX, aircraftY = g_app.view.AircraftScreenY;
    const std::u16string path(g_app.view.CurrentMapPath.view());
    if (LoadMapBitmap(path) != 0) {
        g_app.view.MapRouteBurnt = false;
        return;
    }
    g_app.view.MapCenterX = centreX;
    g_app.view.MapCenterY = centreY;
    g_app.view.AircraftScreenX = aircraftX;
    g_app.view.AircraftScreenY = aircraftY;
}

}  // namespace aerix
