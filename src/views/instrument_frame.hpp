// The HSI and AERIX instrument views: one frame of either, drawn from a copy of everything it
// needs so that a thread of its own can draw it while the user-interface thread goes on.
//
// Picture and drawing centre. Each view draws an off-screen picture twice its drawing centre in
// size, the aircraft (the card's centre) at that centre:
//   HSI    centre (120, 135): a 240 x 270 picture shown 1:1 in the view;
//   AERIX  centre (215, 193): a 430 x 386 picture drawn at 1.79 times the view's resolution and
//          shrunk (area-averaged, which smooths its lines) to 240 x 215 at the top of the view;
//          below it the readout boxes are drawn 1:1 so that their figures stay crisp.
// Both frames end with the data bar in the view's rows 254 to 268, where the MAP view has it.
//
// Range: the card's edge lies 5 nm x the range step (1, 2, 4, 8, 16) from the aircraft, so 5 to
// 80 nm. The deviation bar's full scale is 5 dots = 5 nm whatever the range: a given deflection
// always means the same distance off course, as on a panel GPS en route.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

#include "gps/gps_fix.hpp"
#include "platform/canvas.hpp"
#include "store/nav_data_state.hpp"
#include "store/nav_types.hpp"
#include "views/active_leg.hpp"
#include "views/view_inputs.hpp"

namespace aerix {

// The view area the frame fills, and the text of the scale readout.
inline constexpr int kInstrumentViewWidth = 240;
inline constexpr int kInstrumentViewHeight = 268;
inline constexpr const char* kInstrumentScaleFormat = "  %d nm  ";
inline constexpr double kRangePerStepNm = 5.0;
inline constexpr double kFullScaleDeviationNm = 5.0;

struct InstrumentLeg {
    double startLatitude = 0.0, startLongitude = 0.0;  // CentiMinutes
    double endLatitude = 0.0, endLongitude = 0.0;
};

// Everything one frame needs, taken on the user-interface thread.
struct InstrumentFrameInput {
    bool aerix = false;
    int centreX = 120, centreY = 135;
    std::uint32_t rangeStep = 1;
    GpsFix fix;
    bool haveFix = false;        // a feed has published a fix
    bool invalidSignal = false;  // show the invalid-signal banner
    ActiveLeg leg;
    std::vector<InstrumentLeg> route;  // the plan's legs, and a direct-to leg last
    bool showAirspace = true;
    bool showScale = false;
    bool showLatLon = false;  // the position readout lies under the card
    // The loaded arrays; the user-interface thread stops the drawing before replacing them.
    std::span<const NavEntry> nav;
    std::span<const AirspaceEntry> airspace;
    // Drawing stops early when asked (the view changes or the program ends).
    std::stop_token stop;
};

// The scale readout, e.g. "  10 nm  ".
std::string ScaleReadoutText(std::uint32_t rangeStep);

// The pictures, in picture coordinates (2 x centre in size).
void DrawHsiPicture(platform::Canvas& canvas, const InstrumentFrameInput& in);
void DrawAerixPicture(platform::Canvas& canvas, const InstrumentFrameInput& in);
// The AERIX readout boxes under its picture, in view coordinates.
void DrawAerixPanel(platform::Canvas& canvas, const InstrumentFrameInput& in);
// What the view shows over the picture: the data bar and the invalid-signal banner.
void DrawInstrumentOverlay(platform::Canvas& canvas, const InstrumentFrameInput& in);

// A whole view-sized frame (240 x 268 for AERIX, 240 x 270 for HSI) drawn through canvasOn.
using CanvasFactory = std::function<std::unique_ptr<platform::Canvas>(platform::Bitmap&)>;
platform::Bitmap RenderInstrumentFrame(const InstrumentFrameInput& in,
                                       const CanvasFactory& canvasOn);

// dst's rows from dstTop on = src shrunk by averaging the source area under each pixel.
void ShrinkInto(const platform::Bitmap& src, platform::Bitmap& dst, int dstTop, int dstHeight);

// On the user-interface thread: sequences the active leg (as the MAP view does), acknowledges a
// void fix (its banner goes into this frame) and copies what the frame needs from the view
// state, the display flags, the fix, the leg and the loaded waypoints and airspace.
InstrumentFrameInput PrepareInstrumentFrame(const ViewInputs& inputs, const NavDataState& nav);

}  // namespace aerix
