#include "views/map_management.hpp"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "platform/text.hpp"
#include "store/record_store.hpp"
#include "utilities/entry_text.hpp"
#include "views/calibration_file.hpp"
#include "views/calibration_records.hpp"
#include "views/storage_cards.hpp"

namespace aerix {

namespace fs = std::filesystem;

namespace {

constexpr std::u16string_view kMemory = u"Memory";
constexpr std::u16string_view kMemoryPattern = u"\\My Documents\\aerix\\*.bmp";

char16_t Lower(char16_t c) {
    return (c >= u'A' && c <= u'Z') ? static_cast<char16_t>(c - u'A' + u'a') : c;
}

// '*' matches any run, '?' one character; letter case ignored.
bool Glob(std::u16string_view name, std::u16string_view pattern) {
    if (pattern.empty())
        return name.empty();
    if (pattern[0] == u'*') {
        for (std::size_t i = 0; i <= name.size(); ++i)
            if (Glob(name.substr(i), pattern.substr(1)))
                return true;
        return false;
    }
    if (name.empty())
        return false;
    if (pattern[0] != u'?' && Lower(pattern[0]) != Lower(name[0]))
        return false;
    return Glob(name.substr(1), pattern.substr(1));
}

bool EndsWithBmp(std::u16string_view pattern) {
    return pattern.size() >= 3 && Lower(pattern[pattern.size() - 3]) == u'b' &&
           Lower(pattern[pattern.size() - 2]) == u'm' && Lower(pattern[pattern.size() - 1]) == u'p';
}

std::u16string StoragePattern(std::u16string_view storage) {
    return u"\\" + std::u16string(storage) + u"\\" + u"*bmp";
}

// At most 14 characters are read. An empty field counts as 0; anything else must be a number as
// a whole, so "7,5" or "12x" is told rather than read as 7 or 12.
std::optional<double> ReadField(const std::u16string& text, std::string_view label) {
    std::string field = Utf16ToUtf8(std::u16string_view(text).substr(0, 14));
    if (field.find_first_not_of(" \t") == std::string::npos)
        return 0.0;
    return ReadNumberField(field, label);
}

}  // namespace

std::vector<std::u16string> FindFiles(std::u16string_view pattern, bool* searched) {
    std::vector<std::u16string> names;
    std::size_t cut = pattern.find_last_of(u"\\/");
    std::u16string_view folder = cut == std::u16string_view::npos ? u"" : pattern.substr(0, cut);
    std::u16string_view mask = cut == std::u16string_view::npos ? pattern : pattern.substr(cut + 1);
    std::vector<std::u16string> masks{std::u16string(mask)};
    if (EndsWithBmp(mask)) {
        // Scanned charts come as PNG and JPEG today.
        std::u16string stem(mask.substr(0, mask.size() - 3));
        for (std::u16string_view ext : {u"png", u"jpg", u"jpeg"})
            masks.push_back(stem + std::u16string(ext));
    }
    std::error_code ec;
    fs::path dir = ResolveStoragePath(std::u16string(folder) + u"\\x");
    dir = dir.parent_path();
    if (searched != nullptr)
        *searched = fs::is_directory(dir, ec);
    for (const auto& entry : fs::directory_iterator(dir, ec)) {
        if (!entry.is_regular_file(ec))
            continue;
        std::u16string name = Utf8ToUtf16(entry.path().filename().string());
        if (std::any_of(masks.begin(), masks.end(),
                        [&](const std::u16string& m) { return Glob(name, m); }))
            names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

// ---- Load bitmap ----

void LoadBitmapDialog::Open() {
    std::vector<std::u16string>& list = view_.StorageList;
    list.clear();
    int count = 0;
    list.insert(list.begin(), EnumerateStorageCards(&count, 0));
    for (int i = 1; i < count; ++i)
        list.insert(list.begin(), EnumerateStorageCards(&count, i));
    list.insert(list.begin(), std::u16string(kMemory));
    view_.BitmapSearchPattern.assign(kMemoryPattern);
    view_.SelectedStorage.assign(kMemory);
    FillBitmaps();
}

void LoadBitmapDialog::SelectStorage(int index) {
    if (index < 0 || index >= static_cast<int>(view_.StorageList.size()))
        return;
    if (index == 0) {
        view_.SelectedStorage.assign(kMemory);
        view_.BitmapSearchPattern.assign(kMemoryPattern);
    } else {
        view_.SelectedStorage.assign(view_.StorageList[static_cast<std::size_t>(index)]);
        view_.BitmapSearchPattern.assign(StoragePattern(view_.SelectedStorage.view()));
    }
    FillBitmaps();
}

int LoadBitmapDialog::SelectBitmap(int index) {
    if (index < 0 || index >= static_cast<int>(bitmaps_.size()))
        return 0;
    const std::u16string& file = bitmaps_[static_cast<std::size_t>(index)];
    if (view_.SelectedStorage.view() == kMemory)
        view_.CurrentMapPath.assign(u"\\My Documents\\Aerix\\" + file);
    else
        view_.CurrentMapPath.assign(u"\\" + std::u16string(view_.SelectedStorage.view()) + u"\\" +
                                    file);
    view_.MapZoom = 1.0;
    return 1;
}

void LoadBitmapDialog::FillBitmaps() {
    bitmaps_.clear();
    std::vector<std::u16string> found = FindFiles(view_.BitmapSearchPattern.view(), nullptr);
    // The first name is added before the search's result is looked at: a search that finds
    // nothing still lists whatever name the last search left.
    if (!found.empty())
        findData_ = found.front();
    bitmaps_.push_back(findData_);
    int count = 1;
    for (std::size_t i = 1; i < found.size(); ++i) {
        bitmaps_.push_back(found[i]);
        findData_ = found[i];
        ++count;
    }
    if (count == 0) {
        // Only a search that could not start at all comes here.
        platform::ShowError(kNoMapsOnCardText);
        view_.SelectedStorage.assign(kMemory);
        view_.BitmapSearchPattern.assign(u"\\My Documents\\aerix\\*bmp");
        FillBitmaps();
    }
}

// ---- Calibrate ----

void CalibrateDialog::ToggleLatHemisphere() {
    latHemisphere = latHemisphere == u"N" ? u"S" : u"N";
}

void CalibrateDialog::ToggleLonHemisphere() {
    lonHemisphere = lonHemisphere == u"E" ? u"W" : u"E";
}

int CalibrateDialog::Ok() {
    std::optional<double> latDeg, latMin, lonDeg, lonMin;
    if (!(latDeg = ReadField(latDegrees, "Latitude degrees")) ||
        !(latMin = ReadField(latMinutes, "Latitude minutes")) ||
        !(lonDeg = ReadField(lonDegrees, "Longitude degrees")) ||
        !(lonMin = ReadField(lonMinutes, "Longitude minutes")))
        return 0;
    double latitude = *latDeg + *latMin * (1.0 / 60);
    if (latHemisphere == u"S")
        latitude = -latitude;
    double longitude = *lonDeg + *lonMin * (1.0 / 60);
    if (lonHemisphere == u"W")
        longitude = -longitude;
    const double column = view_.MapCenterX - view_.AnchorX + view_.AircraftScreenX;
    const double row = view_.MapCenterY - view_.AnchorY + view_.AircraftScreenY - 14;
    MapCalibrationValues& c = view_.MapCalibration;
    if (view_.CalibrateCorner == 1) {
        c[kRefX1] = column;
        c[kRefY1] = row;
        c[kRefLon1] = longitude;
        c[kRefLat1] = latitude;
        view_.CalibrationFirstDone = 1;
    } else {
        c[kRefX2] = column;
        c[kRefY2] = row;
        c[kRefLon2] = longitude;
        c[kRefLat2] = latitude;
        view_.CalibrationSecondDone = 1;
    }
    if (view_.CalibrationFirstDone == 1 && view_.CalibrationSecondDone == 1 &&
        c[kRefX1] != c[kRefX2] && c[kRefY1] != c[kRefY2])
        CompleteCalibration(view_);
    return 1;
}

int CalibrateDialog::Cancel() {
    view_.CalibrationFirstDone = 0;
    view_.CalibrationSecondDone = 0;
    return 2;
}

void CompleteCalibration(ViewState& view) {
    MapCalibrationValues c = view.MapCalibration;
    const double dLon = c[kRefLon2] - c[kRefLon1];
    const double dX = c[kRefX2] - c[kRefX1];
    const double dLat = c[kRefLat2] - c[kRefLat1];
    const double dY = c[kRefY2] - c[kRefY1];
    // The chart is trusted only 35 pixels inside its edges.
    c[kWestLimit] = (35 - c[kRefX1]) * dLon / dX + c[kRefLon1];
    c[kSouthLimit] = ((view.MapHeight - 35) - c[kRefY1]) * dLat / dY + c[kRefLat1];
    c[kEastLimit] = ((view.MapWidth - 35) - c[kRefX1]) * dLon / dX + c[kRefLon1];
    c[kNorthLimit] = (35 - c[kRefY1]) * dLat / dY + c[kRefLat1];
    c[kScaleNumber] = std::fabs(dLon) > 1e-6 ? std::fabs(dX / dLon) : 9999999999.0;
    // Two corners on one parallel or meridian place the chart nowhere: nothing is stored and the
    // corners stay marked, so that entering one again completes it.
    if (std::string problem = CalibrationProblem(c); !problem.empty()) {
        platform::ShowError("Calibration refused: " + problem);
        return;
    }
    view.MapCalibration = c;
    {
        DbHandle h = OpenDatabase(schema::kMapsName, schema::kMapPath);
        if (h)
            WriteChartCalibration(h, MapRecord{std::u16string(view.CurrentMapPath.view()), c});
    }
    view.CalibrationFirstDone = 0;
    view.CalibrationSecondDone = 0;
    platform::ShowNotice(kCalibratedText, "Information...");
}

// ---- Calibrated maps ----

void CalibratedMapsDialog::Open() {
    platform::Sys().ui->SetTitle("Calibrated maps");
    names_.clear();
    DbHandle h = OpenDatabase(schema::kMapsName, schema::kMapPath);
    for (std::uint32_t i = 0; h; ++i) {
        MapRecord r;
        if (ReadMap(h, kByIndex, i, r) == 0)
            break;
        std::size_t slash = r.Path.find_last_of(u'\\');
        // Without a backslash the first character is dropped all the same.
        names_.push_back(slash == std::u16string::npos
                             ? r.Path.substr(std::min<std::size_t>(1, r.Path.size()))
                             : r.Path.substr(slash + 1));
    }
}

void CalibratedMapsDialog::Remove(int index) {
    if (index < 0 || index >= static_cast<int>(names_.size()))
        return;
    if (!platform::AskWarning(kDeleteMapText))
        return;
    names_.erase(names_.begin() + index);
    DeleteMap(static_cast<std::uint32_t>(index));
}

void CalibratedMapsDialog::Close() {
    platform::Sys().ui->SetTitle("Aerix");
}

}  // namespace aerix
