#include "views/plan_sectors.hpp"

#include "platform/services.hpp"
#include "store/record_store.hpp"

namespace aerix {

std::vector<SectorRecord> ReadPlanSectors(const SettingsState& settings) {
    std::vector<SectorRecord> sectors;
    if (settings.ActivePlanName.empty())
        return sectors;
    DbHandle h = platform::Sys().store->OpenDatabase(
        platform::kObjectStoreVolume, settings.ActivePlanName.view(), schema::kSecNumber,
        platform::kOpenAutoIncrement);
    if (!h)
        return sectors;
    SectorRecord r;
    // Auto-increment moves the handle on after each read.
    for (CeOid oid = ReadSector(h, kByIndex, 0, r); oid != 0;
         oid = ReadSector(h, kFromCurrent, 0, r)) {
        sectors.push_back(r);
        r = SectorRecord();
    }
    return sectors;
}

}  // namespace aerix
