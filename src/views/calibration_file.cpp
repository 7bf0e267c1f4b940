#include "views/calibration_file.hpp"

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
}  // namespace

void ParseCalibrationLine(std::string_view line, FieldBuffer& buffer,
                          MapCalibrationValues& values) {
    for (int field = 1; field <= 13; ++field) {
        SplitField(line, field, buffer);
        values[static_cast<std::size_t>(field - 1)] = TextToDouble(buffer.Text());
    }
}

std::u16string CalibrationFilePath(std::u16string_view bitmapPath) {
    std::u16string path(bitmapPath);
    std::size_t keep = path.size() >= 3 ? path.size() - 3 : 0;
    path.resize(keep);
    return path + u"ndx";
}

bool ReadCalibrationFile(std::u16string_view path, MapCalibrationValues& values) {
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
        ParseCalibrationLine(line, buffer, values);
        line.clear();
    }
    return true;
}

}  // namespace aerix
