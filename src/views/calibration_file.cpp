#include "views/calibration_file.hpp"

#include <cctype>
#include <cmath>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "platform/text_numbers.hpp"
#include "views/map_view.hpp"
#include "views/storage_cards.hpp"

namespace aerix {

namespace {
// Longer lines are cut; no calibration line comes near this.
constexpr std::size_t kMaxLine = 4096;

constexpr const char* kFieldNames[13] = {
    "pixels per degree", "RefX1",      "RefX2",     "RefY1",   "RefY2",
    "RefLon1",           "RefLon2",    "RefLat1",   "RefLat2", "south limit",
    "north limit",       "west limit", "east limit"};

// The leading-number reading takes "12abc" as 12, but text with no number at all (or "nan")
// would silently become 0.
bool StartsWithNumber(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t'))
        ++i;
    if (i < text.size() && (text[i] == '+' || text[i] == '-'))
        ++i;
    if (i < text.size() && text[i] == '.')
        ++i;
    return i < text.size() && std::isdigit(static_cast<unsigned char>(text[i]));
}

std::string Number(double v) {
    return FormatGeneral(v, 10);
}

}  // namespace

int ParseCalibrationLine(std::string_view line, FieldBuffer& buffer, MapCalibrationValues& values) {
    int notANumber = 0;
    for (int field = 1; field <= 13; ++field) {
        SplitField(line, field, buffer);
        values[static_cast<std::size_t>(field - 1)] = TextToDouble(buffer.Text());
        if (notANumber == 0 && !StartsWithNumber(buffer.Text()))
            notANumber = field;
    }
    return notANumber;
}

std::string CalibrationProblem(const MapCalibrationValues& v) {
    for (std::size_t i = 0; i < v.size(); ++i)
        if (!std::isfinite(v[i]))
            return std::string(kFieldNames[i]) + " is not a finite number";
    if (v[kScaleNumber] <= 0)
        return "pixels per degree is " + Number(v[kScaleNumber]) + ", not above 0";
    if (v[kRefX1] == v[kRefX2])
        return "RefX1 equals RefX2";
    if (v[kRefY1] == v[kRefY2])
        return "RefY1 equals RefY2";
    if (v[kRefLon1] == v[kRefLon2])
        return "RefLon1 equals RefLon2";
    if (v[kRefLat1] == v[kRefLat2])
        return "RefLat1 equals RefLat2";
    for (int i : {kRefLat1, kRefLat2, kSouthLimit, kNorthLimit})
        if (std::fabs(v[static_cast<std::size_t>(i)]) > 90)
            return std::string(kFieldNames[i]) + " " + Number(v[static_cast<std::size_t>(i)]) +
                   " is beyond 90 degrees";
    if (v[kSouthLimit] >= v[kNorthLimit])
        return "south limit " + Number(v[kSouthLimit]) + " is not below north limit " +
               Number(v[kNorthLimit]);
    if (v[kWestLimit] >= v[kEastLimit])
        return "west limit " + Number(v[kWestLimit]) + " is not below east limit " +
               Number(v[kEastLimit]);
    return {};
}

std::u16string CalibrationFilePath(std::u16string_view bitmapPath) {
    std::u16string path(bitmapPath);
    std::size_t keep = path.size() >= 3 ? path.size() - 3 : 0;
    path.resize(keep);
    return path + u"ndx";
}

bool ReadCalibrationFile(std::u16string_view path, MapCalibrationValues& values,
                         std::string* problem) {
    std::ifstream in(ResolveStoragePath(path), std::ios::binary);
    if (!in) {
        platform::ShowError(kCalibFileOpenText);
        return false;
    }
    FieldBuffer buffer;
    std::string line;
    for (std::istreambuf_iterator<char> it(in), end; it != end; ++it) {
        char byte = *it;
        if (byte != '\n') {
            if (line.size() < kMaxLine)
                line.push_back(byte);
            continue;
        }
        // The byte before the line feed is the carriage return.
        if (!line.empty())
            line.pop_back();
        int notANumber = ParseCalibrationLine(line, buffer, values);
        if (problem != nullptr)
            *problem = notANumber == 0 ? std::string()
                                       : std::string(kFieldNames[notANumber - 1]) + " (field " +
                                             std::to_string(notANumber) + ") is not a number";
        line.clear();
    }
    return true;
}

}  // namespace aerix
