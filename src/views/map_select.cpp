// Choosing the chart for the fix among the calibrated charts of "Maps".
#include <filesystem>

#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "platform/text.hpp"
#include "store/record_store.hpp"
#include "views/map_geometry.hpp"
#include "views/map_view.hpp"
#include "views/storage_cards.hpp"

namespace aerix {

void SelectMapForPosition(const ViewInputs& in) {
    ViewState& view = in.view;
    const double latitude = in.gps.Fix.latitude * (1.0 / 6000.0);
    const double longitude = in.gps.Fix.longitude * (1.0 / 6000.0);
    const std::int32_t request = view.MapChangeRequest;
    const double current = view.MapCalibration[kScaleNumber];
    double best = request == 1 ? 99999999.0 : 0.0;
    int taken = 0;
    {
        DbHandle h = OpenDatabase(schema::kMapsName, schema::kMapPath);
        for (std::uint32_t i = 0; h; ++i) {
            MapRecord r;
            if (ReadMap(h, kByIndex, i, r) == 0)
                break;
            if (!MapContains(r.Calibration, longitude, latitude) || r.Path.empty() ||
                !std::filesystem::exists(ResolveStoragePath(r.Path)))
                continue;
            const double scale = r.Calibration[kScaleNumber];
            bool take = false;
            bool stop = false;
            if (request == 1) {
                take = scale > current && !(scale >= best);
            } else if (request == -1) {
                take = scale < current && !(scale <= best);
            } else if (current != 0.0 && current <= scale + 10.0 && current >= current - 10.0) {
                // The second test compares the present scale with itself, so the first chart no
                // more than 10 less detailed ends the search; charts rely on that order.
                take = stop = true;
            } else {
                take = scale > best;
            }
            if (take) {
                view.CurrentMapPath.assign(r.Path);
                best = scale;
                ++taken;
            }
            if (stop)
                break;
        }
    }
    if (taken > 0) {
        view.MapChangeRequest = 0;
        if (LoadMapBitmap(view, in.settings, in.leg, view.CurrentMapPath.view()) == 1) {
            view.CurrentMapPath.assign(Utf8ToUtf16(kWorldMapPath));
            if (LoadMapBitmap(view, in.settings, in.leg, view.CurrentMapPath.view()) == 1)
                platform::ShowError(kWorldMapNotFoundText);
        }
    }
}

}  // namespace aerix
