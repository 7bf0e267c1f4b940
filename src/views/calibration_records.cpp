#include "views/calibration_records.hpp"

#include <algorithm>
#include <string>
#include <vector>

namespace aerix {

namespace {

// The ids of the chart's records, the newest (highest) last; the newest one is read into
// `newest` over what it holds.
std::vector<CeOid> ChartRecords(DbHandle& maps, std::u16string_view path, MapRecord* newest) {
    std::vector<CeOid> ids;
    if (maps.SeekValue(platform::PropVal::Text(300, std::u16string(path))) == 0)
        return ids;
    const MapRecord base = newest != nullptr ? *newest : MapRecord{};
    // Records sort by path, so the chart's records follow one another.
    for (;;) {
        MapRecord r = base;
        CeOid oid = ReadMap(maps, kFromCurrent, 0, r);
        if (oid == 0 || r.Path != path)
            break;
        ids.push_back(oid);
        if (oid == *std::max_element(ids.begin(), ids.end()) && newest != nullptr)
            *newest = std::move(r);
    }
    auto highest = std::max_element(ids.begin(), ids.end());
    if (highest != ids.end())
        std::iter_swap(highest, ids.end() - 1);
    return ids;
}

}  // namespace

CeOid ReadChartCalibration(DbHandle& maps, std::u16string_view path, MapRecord& record) {
    MapRecord found = record;
    std::vector<CeOid> ids = ChartRecords(maps, path, &found);
    if (ids.empty())
        return 0;
    record = std::move(found);
    return ids.back();
}

CeOid WriteChartCalibration(DbHandle& maps, const MapRecord& record) {
    std::vector<CeOid> ids = ChartRecords(maps, record.Path, nullptr);
    CeOid written = WriteMap(maps, record, ids.empty() ? 0 : ids.back());
    if (written != 0 && ids.size() > 1) {
        ids.pop_back();
        for (CeOid stale : ids)
            maps.DeleteRecord(stale);
    }
    return written;
}

}  // namespace aerix
