// The "Maps" records of one chart. A chart has one record: a recalibration writes over it, and
// duplicates that older versions appended are cleared away when the chart is calibrated again.
#pragma once

#include <string_view>

#include "store/record_store.hpp"

namespace aerix {

// The newest record (highest id) whose path is `path`, read over `record` so that a property the
// record lacks keeps the value `record` holds. 0 when the chart has none.
CeOid ReadChartCalibration(DbHandle& maps, std::u16string_view path, MapRecord& record);

// Stores the chart's calibration over its newest record (or as a new one) and deletes its other
// records. The record's id; 0 after "Record write failed".
CeOid WriteChartCalibration(DbHandle& maps, const MapRecord& record);

}  // namespace aerix
