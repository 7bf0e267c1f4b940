// The calibration text file beside a chart (chart.bmp -> chart.ndx): lines of fields each
// followed by the byte 0xB8; fields 1 to 13 are the calibration numbers, field 0 is unused.
#pragma once

#include <string>
#include <string_view>

#include "store/field_splitter.hpp"
#include "views/map_types.hpp"

namespace aerix {

// Reads every complete line into values; the last line wins. A line short of fields repeats the
// number the buffer last held. False (values untouched) after "Could not open Map Calib txt
// file. Error:" when the file cannot be opened. When the last complete line has a field without
// a leading number, *problem (if given) says which.
bool ReadCalibrationFile(std::u16string_view path, MapCalibrationValues& values,
                         std::string* problem = nullptr);
// One line (without its line end) into all thirteen values, through the shared buffer. Returns
// the first field (1 to 13) whose text does not start with a number, 0 when all do.
int ParseCalibrationLine(std::string_view line, FieldBuffer& buffer, MapCalibrationValues& values);
// The calibration file's pocket path: the last three characters replaced by "ndx".
std::u16string CalibrationFilePath(std::u16string_view bitmapPath);
// Why the thirteen numbers cannot place a chart (not finite, no scale, equal reference points,
// limits that enclose nothing); empty when they can.
std::string CalibrationProblem(const MapCalibrationValues& values);

}  // namespace aerix
