// The plan route burnt into the chart: a magenta band with a dashed black centre line.
#include "app/state/app_state.hpp"
#include "platform/numeric.hpp"
#include "views/map_geometry.hpp"
#include "views/map_view.hpp"
#include "views/plan_sectors.hpp"

namespace aerix {

namespace {

platform::Point ChartPoint(double latitude, double longitude) {
    const MapCalibrationValues& c = g_app.MapCalibration;
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
    if (g_app.DirectToStartLatitude.load() != 0) {
        // The direct-to leg runs to the active sector's end point.
        std::uint32_t index = g_app.ActiveSectorIndex;
        if (index < sectors.size()) {
            DrawBand(map, {ChartPoint(g_app.DirectToStartLatitude.load(),
                                      g_app.DirectToStartLongitude.load()),
                           ChartPoint(sectors[index].EndLatitude, sectors[index].EndLongitude)});
        }
    }
    map.SetPen({});
}

}  // namespace aerix
