#include "aircraft/aircraft.hpp"

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

void ApplyAircraftToState(AircraftState& state, const AircraftRecord& aircraft) {
    state.TaxiFuel = aircraft.TaxiFuel;
    state.FuelUnits = static_cast<std::uint32_t>(aircraft.FuelUnits);
}

bool LoadCurrentAircraft(const SettingsState& settings, AircraftState& state) {
    AircraftRecord r;
    if (!ReadNamed(settings.AircraftReg.view(), r))
        return false;
    state.CurrentAircraft = std::move(r);
    ApplyAircraftToState(state, state.CurrentAircraft);
    return true;
}

std::vector<AircraftRecord> ListAircraft() {
    std::vector<AircraftRecord> all;
    DbHandle h = OpenDatabase(schema::kAircraftName, schema::kAcName);
    ReadEach(h, ReadAircraft, [&](AircraftRecord r, CeOid) { all.push_back(std::move(r)); });
    return all;
}

namespace {

bool EqualNoCase(std::u16string_view a, std::u16string_view b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        char16_t x = a[i], y = b[i];
        if (x >= u'a' && x <= u'z')
            x = static_cast<char16_t>(x - u'a' + u'A');
        if (y >= u'a' && y <= u'z')
            y = static_cast<char16_t>(y - u'a' + u'A');
        if (x != y)
            return false;
    }
    return true;
}

}  // namespace

bool FindAircraft(std::u16string_view registration, AircraftRecord& out, platform::CeOid* oid) {
    DbHandle h = OpenDatabase(schema::kAircraftName, schema::kAcName);
    bool found = false;
    AircraftRecord r;
    while (h) {
        platform::CeOid id = ReadAircraft(h, kFromCurrent, 0, r);
        if (id == 0)
            break;
        bool exact = r.Name == registration;
        if (exact || (!found && EqualNoCase(r.Name, registration))) {
            out = r;
            if (oid)
                *oid = id;
            found = true;
            if (exact)
                break;
        }
        r = AircraftRecord{};
    }
    return found;
}

std::vector<StoredStation> ReadStations(std::u16string_view aircraft) {
    std::vector<StoredStation> out;
    DbHandle h = OpenDatabase(schema::kStationsName, schema::kStKind);
    ReadEach(h, ReadStation, [&](StationRecord r, CeOid id) {
        if (r.AircraftName == aircraft)
            out.push_back({id, std::move(r)});
    });
    return out;
}

std::vector<StoredEnvelopePoint> ReadEnvelopePoints(std::u16string_view aircraft) {
    std::vector<StoredEnvelopePoint> out;
    DbHandle h = OpenEnvelopes();
    ReadEach(h, ReadEnvelopePoint, [&](EnvelopePointRecord r, CeOid id) {
        if (r.AircraftName == aircraft)
            out.push_back({id, std::move(r)});
    });
    return out;
}

bool MakeAircraftCurrent(SettingsState& settings, AircraftState& state,
                         std::u16string_view registration) {
    AircraftRecord r;
    if (registration.size() >= settings.AircraftReg.Capacity() || !ReadNamed(registration, r))
        return false;
    settings.AircraftReg.assign(registration);
    state.CurrentAircraft = std::move(r);
    ApplyAircraftToState(state, state.CurrentAircraft);
    return true;
}

}  // namespace aerix
