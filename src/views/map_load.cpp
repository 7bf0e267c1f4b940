// Loading a chart: its pixels, then its calibration from "Maps" or from its calibration file,
// then the plan route burnt into it.
#include <filesystem>

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

void UnloadMap(ViewState& view) {
    // Assigning a fresh bitmap gives the chart's memory back at once.
    view.MapBitmap = platform::Bitmap();
    view.MapLoaded = false;
}

int LoadMapBitmap(ViewState& view, const SettingsState& settings, const LegState& leg,
                  std::u16string_view path) {
    if (path.empty())
        return 0;
    if (view.MapLoaded)
        UnloadMap(view);
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
    view.MapBitmap = std::move(bitmap);
    view.MapLoaded = true;
    view.MapRouteBurnt = false;
    view.MapWidth = view.MapBitmap.Width();
    view.MapHeight = view.MapBitmap.Height();
    view.MapCenterX = view.AircraftScreenX = view.AnchorX;
    view.MapCenterY = view.AircraftScreenY = view.AnchorY;
    LoadMapCalibration(path, view.MapCalibration);
    if (settings.ViewMode == kViewMap) {
        // The route is burnt into the chart once per load, not drawn per paint.
        std::unique_ptr<platform::Canvas> canvas = Sys().graphics->CanvasOn(view.MapBitmap);
        if (canvas)
            DrawRouteOnMap(*canvas, view, settings, leg);
    }
    return 0;
}

void LoadMapCalibration(std::u16string_view path, MapCalibrationValues& calibration) {
    DbHandle h = OpenDatabase(schema::kMapsName, schema::kMapPath);
    if (!h)
        return;
    MapRecord record;
    record.Calibration = calibration;
    // A property the record lacks leaves the value in force.
    if (ReadChartCalibration(h, path, record) != 0) {
        calibration = record.Calibration;
        return;
    }
    std::u16string calibrationPath = CalibrationFilePath(path);
    if (!std::filesystem::exists(ResolveStoragePath(calibrationPath))) {
        platform::ShowNotice(kMapNotCalibratedText, "Warning");
        return;
    }
    // Numbers that place the chart nowhere sensible would draw another country under the
    // aircraft: such a file is refused and the calibration in force stays.
    MapCalibrationValues read = calibration;
    std::string problem;
    ReadCalibrationFile(calibrationPath, read, &problem);
    if (problem.empty())
        problem = CalibrationProblem(read);
    if (!problem.empty()) {
        platform::ShowError("Calibration file " + Utf16ToUtf8(calibrationPath) +
                            " refused: " + problem);
        return;
    }
    calibration = read;
    record.Path = std::u16string(path);
    record.Calibration = calibration;
    WriteMap(h, record);
    platform::ShowNotice(kMapAutoCalibratedText, "Information");
}

}  // namespace aerix
