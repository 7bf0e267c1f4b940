// The moving map: chooses and loads the chart for the fix, centres it, burns the plan route into
// it and paints the view (chart, white beyond its edges, data bar, aircraft symbol, readouts).
// Everything draws on platform::Canvas; the chart's pixels live in ViewState::MapBitmap. Each
// function is handed the state groups it reads and updates.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "gps/gps_fix.hpp"
#include "gps/leg_state.hpp"
#include "platform/canvas.hpp"
#include "settings/settings_state.hpp"
#include "store/records.hpp"
#include "views/map_readouts.hpp"
#include "views/map_types.hpp"
#include "views/view_inputs.hpp"
#include "views/view_state.hpp"

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
void CenterMapOnPosition(platform::Canvas& view, MapReadouts* readouts, const ViewInputs& in,
                         double longitude, double latitude);
// Paints the view from the present fields.
void PaintMapView(platform::Canvas& view, MapReadouts* readouts, const ViewInputs& in,
                  int fromCentering);
// Chooses and loads the chart for the present fix under in.view.MapChangeRequest.
void SelectMapForPosition(const ViewInputs& in);
// 0 when loaded or when the path is empty, 1 when the bitmap could not be loaded (the old chart
// is gone by then). In the MAP view the plan's route (and a direct-to leg) is burnt into it.
int LoadMapBitmap(ViewState& view, const SettingsState& settings, const LegState& leg,
                  std::u16string_view path);
// Fills calibration for the bitmap at path: from "Maps", else from its ".ndx" file.
void LoadMapCalibration(std::u16string_view path, MapCalibrationValues& calibration);
// Releases the loaded chart.
void UnloadMap(ViewState& view);

// The waypoint being flown: sequences the active sector and draws the data bar.
void UpdateActiveLeg(platform::Canvas& view, const ViewInputs& in,
                     const std::vector<SectorRecord>& sectors);
// Signed angle of b seen from a, folded to at most 90 degrees; *ahead false when b lies behind.
double AngleOff(double a, double b, bool* ahead);
// Burns the plan route (and a direct-to leg) into the chart and remembers it in
// view.MapBurntRoute.
void DrawRouteOnMap(platform::Canvas& map, ViewState& view, const SettingsState& settings,
                    const LegState& leg);
// The route as DrawRouteOnMap would burn it now: each leg's ends, then a direct-to leg.
std::vector<std::int32_t> RouteToBurn(const std::vector<SectorRecord>& sectors,
                                      const LegState& leg);
// Loads the chart again when the route burnt into it is not the plan's route any more (a sector
// changed, the plan was reversed or opened, a direct-to began or ended, or the chart was loaded
// outside the MAP view).
void RefreshBurntRoute(ViewState& view, const SettingsState& settings, const LegState& leg,
                       const std::vector<SectorRecord>& sectors);
// The aircraft at view.AircraftScreenX/Y; it flashes from paint to paint (view.SymbolBlink).
void DrawAircraftSymbol(platform::Canvas& canvas, ViewState& view, const SettingsState& settings,
                        const GpsFix& fix);
// The scale readout: the miles that span 100 to 150 pixels at 50 degrees north.
void DrawScaleBar(MapReadouts& readouts, const ViewState& view);

}  // namespace aerix
