#include "aircraft/aircraft.hpp"

#include "app/state/app_state.hpp"
#include "store/record_store.hpp"

namespace aerix {

namespace {

bool ReadNamed(std::u16string_view registration, AircraftRecord& out) {
    DbHandle h = OpenDatabase(schema::kAircraftName, schema::kAcName);
    if (!h)
        return false;
    platform::PropVal key = platform::PropVal::Text(600, std::u16string(registration));
    if (h.SeekValue(key) == 0)
        return false;
    AircraftRecord r;
    if (ReadAircraft(h, kFromCurrent, 0, r) == 0)
        return false;
    out = std::move(r);
    return true;
}

}  // namespace

void ApplyAircraftToState(const AircraftRecord& aircraft) {
    g_app.TaxiFuel = aircraft.TaxiFuel;
    g_app.FuelUnits = static_cast<std::uint32_t>(aircraft.FuelUnits);
}

bool LoadCurrentAircraft() {
    AircraftRecord r;
    if (!ReadNamed(g_app.AircraftReg.view(), r))
        return false;
    g_app.CurrentAircraft = std::move(r);
    ApplyAircraftToState(g_app.CurrentAircraft);
    return true;
}

std::vector<AircraftRecord> ListAircraft() {
    std::vector<AircraftRecord> all;
    DbHandle h = OpenDatabase(schema::kAircraftName, schema::kAcName);
    AircraftRecord r;
    while (h && ReadAircraft(h, kFromCurrent, 0, r) != 0) {
        all.push_back(r);
        r = AircraftRecord{};
    }
    return all;
}

bool MakeAircraftCurrent(std::u16string_view registration) {
    AircraftRecord r;
    if (registration.size() >= g_app.AircraftReg.Capacity() || !ReadNamed(registration, r))
        return false;
    g_app.AircraftReg.assign(registration);
    g_app.CurrentAircraft = std::move(r);
    ApplyAircraftToState(g_app.CurrentAircraft);
    return true;
}

}  // namespace aerix
