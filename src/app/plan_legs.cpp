#include "app/plan_legs.hpp"

#include "app/app_state.hpp"
#include "gps/simulator.hpp"
#include "platform/services.hpp"
#include "store/record_store.hpp"
#include "store/schema.hpp"

namespace aerix {

namespace {

bool ReadLeg(int index, SimLeg* leg) {
    SectorRecord sector;
    if (index < 0 ||
        !ReadActivePlanSector(g_app.settings, static_cast<std::uint32_t>(index), sector))
        return false;
    leg->startLatitude = sector.StartLatitude;
    leg->startLongitude = sector.StartLongitude;
    leg->trueCourse = sector.TrueCourse;
    leg->magneticVariation = sector.Variation;
    leg->groundSpeed = sector.GroundSpeed;  // the planned ground speed
    return true;
}

// Quiet: a missing plan simply has no sectors.
int SectorCount() {
    if (g_app.settings.ActivePlanName.empty())
        return 0;
    auto h = platform::Sys().store->OpenDatabase(
        platform::kObjectStoreVolume, g_app.settings.ActivePlanName.view(), schema::kSecNumber, 0);
    return h ? static_cast<int>(h.RecordCount()) : 0;
}

}  // namespace

SimLegSource PlanLegSource() {
    return {ReadLeg, SectorCount};
}

}  // namespace aerix
