// What the views keep between paints: the map's chart, its calibration and where the aircraft is
// drawn on it, the calibration marks, the instrument views' range and centre, the plan view's
// scroll.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/canvas.hpp"
#include "platform/text.hpp"
#include "views/map_types.hpp"

namespace aerix {

struct ViewState {
    // View-state word of the map view, preset at start.
    std::uint32_t ViewStateWord = 0;
    // Instrument views: range step 1, 2, 4, 8 or 16; which of the two is drawn and its centre.
    std::uint32_t InstrumentRangeStep = 1;
    std::uint8_t InstrumentAerix = 0;
    int InstrumentCentreX = 120;
    int InstrumentCentreY = 135;
    // Plan view: first row shown.
    std::uint32_t PlanScrollRow = 0;

    // The chart now loaded: its pocket path, its pixels with the route burnt in (the map's
    // drawing surface), its size and its calibration (MapRecord properties 301-313).
    WideBuf<256> CurrentMapPath;
    platform::Bitmap MapBitmap;
    bool MapLoaded = false;
    std::int32_t MapWidth = 0;
    std::int32_t MapHeight = 0;
    std::array<double, 13> MapCalibration{};
    // The route burnt into MapBitmap (start and end of each leg, then a direct-to leg), so that
    // a paint can tell when the plan changed under the chart; empty when none was burnt.
    std::vector<std::int32_t> MapBurntRoute;
    bool MapRouteBurnt = false;
    // No chart has been chosen for a real fix yet: the first fix chooses one whatever is shown.
    bool MapAwaitingFix = true;
    // Where the aircraft is normally drawn in the 240 x 240 chart area, the chart pixel drawn
    // there, where the symbol really goes (chart-area coordinates) and the slack allowed beyond
    // the right and bottom edges at zoom 1.
    std::int32_t AnchorX = 120;
    std::int32_t AnchorY = 120;
    std::int32_t MapCenterX = 120;
    std::int32_t MapCenterY = 120;
    std::int32_t AircraftScreenX = 120;
    std::int32_t AircraftScreenY = 120;
    std::int32_t MapSlackX = 0;
    std::int32_t MapSlackY = 0;
    // 0.25, 0.5, 1, 2 or 4.
    double MapZoom = 1.0;
    // 0 choose by the present detail, 1 the next more detailed chart, -1 the next less detailed.
    std::int32_t MapChangeRequest = 0;
    std::uint8_t InvalidSignalPending = 0;
    std::uint8_t SymbolBlink = 0;
    // What the data bar shows: the waypoint being flown.
    DataBarInfo DataBar;
    // Calibration: the corner the pilot marks (1 NE = first reference point, 0 SW = second) and
    // which corners have been entered.
    std::uint8_t CalibrateCorner = 0;
    std::uint8_t CalibrationFirstDone = 0;
    std::uint8_t CalibrationSecondDone = 0;
    // "Load bitmap (to calibrate)": the storage places offered, the one chosen and its pattern.
    std::vector<std::u16string> StorageList;
    WideBuf<260> SelectedStorage;
    WideBuf<260> BitmapSearchPattern;
};

}  // namespace aerix
