// The calibration view (map editing and corner calibration): the loaded bitmap under a fixed
// cross; the pilot drags the bitmap with the pen until a known point lies under the cross, then
// chooses "Calibrate NE" or "Calibrate SW" and types that point's latitude and longitude.
#pragma once

#include "platform/canvas.hpp"
#include "views/view_inputs.hpp"
#include "views/view_state.hpp"

namespace aerix {

// Anchor (120, 120) and no slack: the cross stands at the centre of the chart area.
void BeginCalibrationView(ViewState& view);
// The chart as the MAP view would paint it (in.view under the cross), the cross and the marks.
void PaintCalibrationView(platform::Canvas& canvas, const ViewInputs& in);
void CalibrationPenDown(int x, int y);
// Drags the bitmap: the point under the pen follows it.
void CalibrationPenMove(ViewState& view, int x, int y);

}  // namespace aerix
