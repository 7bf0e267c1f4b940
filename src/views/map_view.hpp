// The moving map: chooses and loads the chart for the fix, centres it, burns the plan route into
// it and paints the view (chart, white beyond its edges, data bar, aircraft symbol, readouts).
// Everything draws on platform::Canvas; the chart's pixels live in g_app.view.MapBitmap.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "store/records.hpp"

#include "platform/canvas.hpp"
#include "views/map_readouts.hpp"
#include "views/map_types.hpp"

namespace aerix {

// The chart occupies (0, 14)-(240, 254) of the view.
inline constexpr int kChartTop = 14;
inline constexpr int kChartSize = 240;

inline constexpr const char* kWorldMapPath = "\\My Documents\\Aerix\\World1.bmp";
inline constexpr const char* kWorldMapNotFoundText = "World map not found";
inline constexpr const char* kMapNotCalibratedText = "Map not calibrated";
inline constexpr const char* kMapAutoCalibratedText = "Map auto-calibrated";
inline constexpr const char* kCalibFileOpenText = "Could not open Map Calib txt file. Error:";
inline constexpr const char* kReleaseInfoDcText = "could not rel info DC";
inline constexpr const char* kInvalidSignalText = " **** INVALID GPS SIGNAL **** ";
// Shown where the aircraft and its position would be until the first fix.
inline constexpr const char* kNoFixText = "NO FIX";

// Makes sure a chart containing the position (degrees) is loaded, centres it and paints.
void CenterMapOnPosition(platform::Canvas& view, MapReadouts* readouts, double longitude,
                         double latitude);
// Paints the view from the present fields.
void PaintMapView(platform::Canvas& view, MapReadouts* readouts, int fromCentering);
// Chooses and loads the chart for the present fix under g_app.view.MapChangeRequest.
void SelectMapForPosition();
// 0 when loaded or when the path is empty, 1 when the bitmap could not be loaded (the old chart
// is gone by then).
int LoadMapBitmap(std::u16string_view path);
// Fills g_app.view.MapCalibration for the bitmap at path: from "Maps", else from its ".ndx" file.
void LoadMapCalibration(std::u16string_view path);
// Releases the loaded chart.
void UnloadMap();

// The waypoint being flown: sequences the active sector and draws the data bar.
void UpdateActiveLeg(platform::Canvas& view, const std::vector<SectorRecord>& sectors);
// Signed angle of b seen from a, folded to at most 90 degrees; *ahead false when b lies behind.
double AngleOff(double a, double b, bool* ahead);
// Burns the plan route (and a direct-to leg) into the chart.
void DrawRouteOnMap(platform::Canvas& map);
// The route as DrawRouteOnMap would burn it now: each leg's ends, then a direct-to leg.
std::vector<std::int32_t> RouteToBurn(const std::vector<SectorRecord>& sectors);
// Loads the chart again when the route burnt into it is not the plan's route any more (a sector
// changed, the plan was reversed or opened, a direct-to began or ended, or the chart was loaded
// outside the MAP view).
void RefreshBurntRoute(const std::vector<SectorRecord>& sectors);
void DrawAircraftSymbol(platform::Canvas& view);
// The scale readout: the miles that span 100 to 150 pixels at 50 degrees north.
void DrawScaleBar(MapReadouts& readouts);

// What refreshes the instrument views' information panel after a chart is chosen.
void SetInfoPanelRefresh(std::function<void()> refresh);

}  // namespace aerix
