// The plan route burnt into the chart: a magenta band with a dashed black centre line.
#include "platform/numeric.hpp"
#include "platform/services.hpp"
#include "views/map_geometry.hpp"
#include "views/map_view.hpp"
#include "views/plan_sectors.hpp"

namespace aerix {

namespace {

platform::Point ChartPoint(const MapCalibrationValues& c, double latitude, double longitude) {
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

std::vector<std::int32_t> RouteToBurn(const std::vector<SectorRecord>& sectors,
                                      const LegState& leg) {
    std::vector<std::int32_t> route;
    route.reserve(sectors.size() * 4 + 4);
    for (const SectorRecord& s : sectors)
        route.insert(route.end(),
                     {s.StartLatitude, s.StartLongitude, s.EndLatitude, s.EndLongitude});
    if (leg.DirectToStartLatitude.load() != 0)
        route.insert(route.end(),
                     {leg.DirectToStartLatitude.load(), leg.DirectToStartLongitude.load(),
                      leg.DirectToTargetLatitude, leg.DirectToTargetLongitude});
    return route;
}

void DrawRouteOnMap(platform::Canvas& map, ViewState& view, const SettingsState& settings,
                    const LegState& leg) {
    std::vector<SectorRecord> sectors = ReadPlanSectors(settings);
    std::vector<platform::Point> points;
    points.reserve(sectors.size() * 2);
    for (const SectorRecord& s : sectors) {
        points.push_back(ChartPoint(view.MapCalibration, s.StartLatitude, s.StartLongitude));
        points.push_back(ChartPoint(view.MapCalibration, s.EndLatitude, s.EndLongitude));
    }
    if (!points.empty())
        DrawBand(map, points);
    // The direct-to leg runs from where it was chosen to its own waypoint.
    if (leg.DirectToStartLatitude.load() != 0) {
        DrawBand(map, {ChartPoint(view.MapCalibration, leg.DirectToStartLatitude.load(),
                                  leg.DirectToStartLongitude.load()),
                       ChartPoint(view.MapCalibration, leg.DirectToTargetLatitude,
                                  leg.DirectToTargetLongitude)});
    }
    map.SetPen({});
    view.MapBurntRoute = RouteToBurn(sectors, leg);
    view.MapRouteBurnt = true;
}

void RefreshBurntRoute(ViewState& view, const SettingsState& settings, const LegState& leg,
                       const std::vector<SectorRecord>& sectors) {
    if (!view.MapLoaded || settings.ViewMode != kViewMap)
        return;
    if (view.MapRouteBurnt && view.MapBurntRoute == RouteToBurn(sectors, leg))
        return;
    // The chart's own pixels are on disk only: load it again and burn the route afresh,
    // keeping where the view was centred.
    const std::int32_t centreX = view.MapCenterX, centreY = view.MapCenterY;
    const std::int32_t aircraftX = view.AircraftScreenX, aircraftY = view.AircraftScreenY;
    const std::u16string path(view.CurrentMapPath.view());
    if (LoadMapBitmap(view, settings, leg, path) != 0) {
        view.MapRouteBurnt = false;
        return;
    }
    view.MapCenterX = centreX;
    view.MapCenterY = centreY;
    view.AircraftScreenX = aircraftX;
    view.AircraftScreenY = aircraftY;
}

}  // namespace aerix
