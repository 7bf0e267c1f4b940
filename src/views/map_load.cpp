// Loading a chart: its pixels, then its calibration from "Maps" or from its calibration file,
// then the plan route burnt into it.
#include <filesystem>

#include "app/state/app_state.hpp"
#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "platform/text.hpp"
#include "store/record_store.hpp"
#include "views/calibration_file.hpp"
#include "views/calibration_records.hpp"
#include "views/map_view.hpp"
#include "views/storage_cards.hpp"

namespace aerix {

using platform::Sys;

void UnloadMap() {
    // Assigning a fresh bitmap gives the chart's memory back at once.
    g_app.view.MapBitmap = platform::Bitmap();
    g_app.view.MapLoaded = false;
}

int LoadMapBitmap(std::u16string_view path) {
    if (path.empty())
        return 0;
    if (g_app.view.MapLoaded)
        UnloadMap();
    if (Sys().graphics == nullptr)
        return 1;
    platform::Bitmap bitmap;
    std::string error;
    if (!Sys().graphics->LoadImage(ResolveStoragePath(path).string(), &bitmap, &error)) {
        // A chart too large for memory, or unreadable, is told in plain words; the caller
        // then falls back on the world chart.
        if (!error.empty())
            platform::ShowError(error);
        return 1;
    }
    g_app.view.MapBitmap = std::move(bitmap);
    g_app.view.MapLoaded = true;
    g_app.view.MapRouteBurnt = false;
    g_app.view.MapWidth = g_app.view.MapBitmap.Width();
    g_app.view.MapHeight = g_app.view.MapBitmap.Height();
    g_app.view.MapCenterX = g_app.view.AircraftScreenX = g_app.view.AnchorX;
    g_app.view.MapCenterY = g_app.view.AircraftScreenY = g_app.view.AnchorY;
    LoadMapCalibration(path);
    if (g_app.settings.ViewMode == kViewMap) {
        // The route is burnt into the chart once per load, not drawn per paint.
        std::unique_ptr<platform::Canvas> canvas = Sys().graphics->CanvasOn(g_app.view.MapBitmap);
        if (canvas)
            DrawRouteOnMap(*canvas);
    }
    return 0;
}

void LoadMapCalibration(std::u16string_view path) {
    DbHandle h = OpenDatabase(schema::kMapsName, schema::kMapPath);
    if (!h)
        return;
    MapRecord record;
    record.Calibration = g_app.view.MapCalibration;
    // A property the record lacks leaves the value in force.
    if (ReadChartCalibration(h, path, record) != 0) {
        g_app.view.MapCalibration = record.Calibration;
        return;
    }
    std::u16string calibrationPath = CalibrationFilePath(path);
    if (!std::filesystem::exists(ResolveStoragePath(calibrationPath))) {
        platform::ShowNotice(kMapNotCalibratedText, "Warning");
        return;
    }
    // Numbers that place the chart nowhere sensible would draw another country under the
    // aircraft: such a file is refused and the calibration in force stays.
    MapCalibrationValues read = g_app.view.MapCalibration;
    std::string problem;
    ReadCalibrationFile(calibrationPath, read, &problem);
    if (problem.empty())
        problem = CalibrationProblem(read);
    if (!problem.empty()) {
        platform::ShowError("Calibration file " + Utf16ToUtf8(calibrationPath) +
                            " refused: " + problem);
        return;
    }
    g_app.view.MapCalibration = read;
    record.Path = std::u16string(path);
    record.Calibration = g_app.view.MapCalibration;
    WriteMap(h, record);
    platform::ShowNotice(kMapAutoCalibratedText, "Information");
}

}  // namespace aerix
