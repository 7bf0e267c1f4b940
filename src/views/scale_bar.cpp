// The scale readout: a bar 100 to 150 pixels long labelled with the whole nautical miles it
// spans, measured on the latitude axis at 50 degrees north whatever the chart.
#include <cstdio>
#include <string>

#include "platform/message_box.hpp"
#include "platform/numeric.hpp"
#include "views/map_geometry.hpp"
#include "views/map_view.hpp"

namespace aerix {

namespace {
// Beyond this the readout is not shown; also what stops the search on a chart whose rows do not
// grow northward.
constexpr int kMaxMiles = 51;

int MilesLength(const MapCalibrationValues& c, double latitude) {
    return MapRow(c, 50.0) - MapRow(c, latitude);
}
}  // namespace

void DrawScaleBar(MapReadouts& readouts, const ViewState& view) {
    const double zoom = view.MapZoom;
    int n = 6;
    double lat = 50.1;
    int length = MilesLength(view.MapCalibration, lat);
    while (length * zoom < 100 && n < kMaxMiles) {
        n += 1;
        lat += 1.0 / 60;
        length = MilesLength(view.MapCalibration, lat);
    }
    while (length * zoom > 150 && n > 0) {
        n -= 1;
        lat -= 1.0 / 60;
        length = MilesLength(view.MapCalibration, lat);
    }
    if (n >= kMaxMiles)
        return;
    int width = TruncInt32(length * zoom);
    int left = TruncInt32((240 - length * zoom) * 0.5);
    readouts.MoveScale({left, 231, left + width, 231 + 14});
    platform::Canvas* dc = readouts.BeginScale();
    if (dc == nullptr)
        return;
    const platform::Rect area{0, -2, width, 12};
    const unsigned format = platform::kTextCenter | platform::kTextSingleLine;
    dc->SetFont({12, false});
    dc->DrawText(std::string(65, ' '), area, format, kReadoutText, kReadoutBack, false);
    char label[32];
    std::snprintf(label, sizeof label, "  %d nm  ", n);
    dc->DrawText(label, area, format, kReadoutText, kReadoutBack, false);
    if (!readouts.EndScale())
        platform::ShowError(kReleaseInfoDcText);
}

}  // namespace aerix
