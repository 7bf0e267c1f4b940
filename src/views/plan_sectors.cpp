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
    ReadEach(h, ReadSector, [&](SectorRecord r, CeOid) { sectors.push_back(std::move(r)); });
    return sectors;
}

}  // namespace aerix
