// The aircraft edit dialog: the fields the pilot types, their checks, and the save of the
// aircraft with its stations and envelope.
#include "aircraft/aircraft_setup_dialog.hpp"

#include <cmath>
#include <limits>

#include "aircraft/aircraft.hpp"
#include "aircraft/weight_balance.hpp"
#include "planning/sector_computation.hpp"
#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "platform/text.hpp"
#include "store/record_store.hpp"
#include "utilities/entry_text.hpp"

namespace aerix {

namespace {

// Registrations and station names share the 24-character buffers of the program's state.
constexpr std::size_t kMaxNameChars = 23;
constexpr std::size_t kMaxTypeChars = 15;
constexpr double kMaxWeight = 1000000.0;
constexpr double kMaxArm = 100000.0;

using AcField = AircraftEditDialog::Field;

std::string Trimmed(std::string_view text) {
    return std::string(TrimBlanks(text));
}

std::u16string Upper(std::u16string_view s) {
    std::u16string out(s);
    for (char16_t& c : out)
        if (c >= u'a' && c <= u'z')
            c = static_cast<char16_t>(c - u'a' + u'A');
    return out;
}

std::string Figure(double v) {
    return FormatFigure(v);
}

// A decimal figure within [lo, hi], or an error naming the field.
std::optional<double> Decimal(std::string_view text, const std::string& label, double lo,
                              double hi) {
    auto v = ParseDecimal(text);
    if (!v || *v < lo || *v > hi) {
        platform::ShowError(label + ": enter a number from " + Figure(lo) + " to " + Figure(hi));
        return std::nullopt;
    }
    return v;
}

std::optional<std::int32_t> Whole(std::string_view text, const std::string& label, std::int64_t lo,
                                  std::int64_t hi) {
    auto v = ParseWholeNumber(text);
    if (!v || *v < lo || *v > hi) {
        platform::ShowError(label + ": enter a whole number from " + std::to_string(lo) + " to " +
                            std::to_string(hi));
        return std::nullopt;
    }
    return static_cast<std::int32_t>(*v);
}

}  // namespace

AircraftEditDialog AircraftEditDialog::ForAdd() {
    AircraftEditDialog d;
    d.original_.ArmUnits = 1;
    for (int f = kClimbRate; f < kFieldCount; ++f)
        d.fields_[f] = "0";
    d.stations_ = {{"APS", 1, ""}, {"FUEL", 2, "0"}};
    return d;
}

std::optional<AircraftEditDialog> AircraftEditDialog::ForEdit(platform::CeOid oid) {
    DbHandle h = OpenDatabase(schema::kAircraftName, schema::kAcName);
    AircraftRecord r;
    if (!h || ReadAircraft(h, kByOid, oid, r) == 0)
        return std::nullopt;
    h.Close();
    AircraftEditDialog d;
    d.oid_ = oid;
    d.original_ = r;
    d.originalName_ = r.Name;
    auto& f = d.fields_;
    f[kRegistration] = Utf16ToUtf8(r.Name);
    f[kType] = Utf16ToUtf8(r.TypeDesignator);
    f[kClimbRate] = Figure(r.ClimbRate);
    f[kClimbTas] = std::to_string(r.ClimbTas);
    f[kClimbFuelFlow] = Figure(r.ClimbFuelFlow);
    f[kCruiseTas] = std::to_string(r.CruiseTas);
    f[kCruiseFuelFlow] = Figure(r.CruiseFuelFlow);
    f[kDescentRate] = Figure(r.DescentRate);
    f[kDescentTas] = std::to_string(r.DescentTas);
    f[kDescentFuelFlow] = Figure(r.DescentFuelFlow);
    f[kTaxiFuel] = Figure(r.TaxiFuel);
    f[kEmptyWeight] = std::to_string(r.EmptyWeight);
    f[kEmptyArm] = Figure(r.EmptyArm);
    f[kMaxTakeoffWeight] = std::to_string(r.MaxTakeoffWeight);
    f[kMaxRampWeight] = std::to_string(r.MaxRampWeight);
    f[kMaxLandingWeight] = std::to_string(r.MaxLandingWeight);
    f[kMaxZeroFuelWeight] = std::to_string(r.MaxZeroFuelWeight);
    f[kGraphArmMin] = Figure(r.GraphArmMin);
    f[kGraphArmMax] = Figure(r.GraphArmMax);
    f[kGraphWeightMin] = Figure(r.GraphWeightMin);
    f[kGraphWeightMax] = Figure(r.GraphWeightMax);
    d.weightUnits_ = r.WeightUnits;
    d.fuelUnits_ = r.FuelUnits;
    d.armUnits_ = r.ArmUnits;

    bool basic = false;
    for (const StoredStation& s : ReadStations(r.Name)) {
        std::int16_t kind = s.Record.StationKind;
        // One basic row only: a second one read from an older store becomes a seat row.
        if (kind == 1 && basic)
            kind = 3;
        if (kind < 1 || kind > 4)
            kind = 3;
        basic = basic || kind == 1;
        d.stations_.push_back({Utf16ToUtf8(s.Record.StationName), kind, Figure(s.Record.Arm)});
    }
    if (!basic)
        d.stations_.insert(d.stations_.begin(), StationRow{"APS", 1, ""});
    for (const StoredEnvelopePoint& p : ReadEnvelopePoints(r.Name))
        d.points_.push_back({Figure(p.Record.Arm), std::to_string(p.Record.Weight)});
    // The closing repeat of the first point is written back on save.
    if (d.points_.size() > 1 && d.points_.front().Arm == d.points_.back().Arm &&
        d.points_.front().Weight == d.points_.back().Weight)
        d.points_.pop_back();
    return d;
}

std::string AircraftEditDialog::Label(Field f) const {
    std::string w = WeightUnitName(weightUnits_);
    std::string fu = FuelUnitName(fuelUnits_);
    std::string a = ArmUnitName(armUnits_);
    switch (f) {
        case kRegistration:
            return "Registration";
        case kType:
            return "Type (ICAO)";
        case kClimbRate:
            return "Climb rate (ft/min)";
        case kClimbTas:
            return "Climb TAS (kt)";
        case kClimbFuelFlow:
            return "Climb fuel flow (" + fu + "/h)";
        case kCruiseTas:
            return "Cruise TAS (kt)";
        case kCruiseFuelFlow:
            return "Cruise fuel flow (" + fu + "/h)";
        case kDescentRate:
            return "Descent rate (ft/min)";
        case kDescentTas:
            return "Descent TAS (kt)";
        case kDescentFuelFlow:
            return "Descent fuel flow (" + fu + "/h)";
        case kTaxiFuel:
            return "Taxi fuel (" + fu + ")";
        case kEmptyWeight:
            return "Empty weight (" + w + ")";
        case kEmptyArm:
            return "Empty weight arm (" + a + ")";
        case kMaxTakeoffWeight:
            return "Max take-off weight (" + w + ")";
        case kMaxRampWeight:
            return "Max ramp weight (" + w + ")";
        case kMaxLandingWeight:
            return "Max landing weight (" + w + ")";
        case kMaxZeroFuelWeight:
            return "Max zero-fuel weight (" + w + ", 0 none)";
        case kGraphArmMin:
            return "Graph arm from (" + a + ")";
        case kGraphArmMax:
            return "Graph arm to (" + a + ")";
        case kGraphWeightMin:
            return "Graph weight from (" + w + ")";
        case kGraphWeightMax:
            return "Graph weight to (" + w + ")";
        case kFieldCount:
            break;
    }
    return {};
}

void AircraftEditDialog::AddStation() {
    stations_.push_back({"", 3, "0"});
}

bool AircraftEditDialog::RemoveStation(std::size_t index) {
    if (index >= stations_.size())
        return false;
    if (stations_[index].Kind == 1) {
        platform::ShowError("The basic aircraft row cannot be removed");
        return false;
    }
    stations_.erase(stations_.begin() + static_cast<std::ptrdiff_t>(index));
    return true;
}

void AircraftEditDialog::SetStationName(std::size_t index, std::string_view name) {
    if (index < stations_.size())
        stations_[index].Name = name;
}

void AircraftEditDialog::SetStationKind(std::size_t index, std::int16_t kind) {
    if (index < stations_.size() && stations_[index].Kind != 1 && kind >= 2 && kind <= 4)
        stations_[index].Kind = kind;
}

void AircraftEditDialog::SetStationArm(std::size_t index, std::string_view arm) {
    if (index < stations_.size() && stations_[index].Kind != 1)
        stations_[index].Arm = arm;
}

std::string AircraftEditDialog::StationArmText(std::size_t index) const {
    const StationRow& s = stations_.at(index);
    return s.Kind == 1 ? fields_[kEmptyArm] : s.Arm;
}

void AircraftEditDialog::InsertPoint(std::size_t after) {
    PointRow row;
    if (!points_.empty())
        row = points_[std::min(after, points_.size() - 1)];
    std::size_t at = after >= points_.size() ? points_.size() : after + 1;
    points_.insert(points_.begin() + static_cast<std::ptrdiff_t>(at), row);
}

void AircraftEditDialog::RemovePoint(std::size_t index) {
    if (index < points_.size())
        points_.erase(points_.begin() + static_cast<std::ptrdiff_t>(index));
}

void AircraftEditDialog::SetPointArm(std::size_t index, std::string_view arm) {
    if (index < points_.size())
        points_[index].Arm = arm;
}

void AircraftEditDialog::SetPointWeight(std::size_t index, std::string_view weight) {
    if (index < points_.size())
        points_[index].Weight = weight;
}

std::optional<AircraftRecord> AircraftEditDialog::Check(
    std::vector<StationRecord>& stations, std::vector<EnvelopePointRecord>& points) const {
    AircraftRecord r = original_;
    std::string reg = Trimmed(fields_[kRegistration]);
    if (reg.empty()) {
        platform::ShowError("Registration: enter the aircraft's registration");
        return std::nullopt;
    }
    r.Name = Utf8ToUtf16(reg);
    if (r.Name.size() > kMaxNameChars) {
        platform::ShowError("Registration: at most 23 characters");
        return std::nullopt;
    }
    {
        DbHandle h = OpenDatabase(schema::kAircraftName, schema::kAcName);
        std::u16string taken;
        ReadEach(h, ReadAircraft, [&](AircraftRecord other, platform::CeOid id) {
            if (id != oid_ && Upper(other.Name) == Upper(r.Name))
                taken = std::move(other.Name);
            return taken.empty();
        });
        if (!taken.empty()) {
            platform::ShowError("There is already an aircraft " + Utf16ToUtf8(taken));
            return std::nullopt;
        }
    }
    std::string type = Trimmed(fields_[kType]);
    r.TypeDesignator = Utf8ToUtf16(type);
    if (r.TypeDesignator.size() > kMaxTypeChars) {
        platform::ShowError("Type (ICAO): at most 15 characters");
        return std::nullopt;
    }
    if (WeightUnitName(weightUnits_).empty() || FuelUnitName(fuelUnits_).empty() ||
        ArmUnitName(armUnits_).empty()) {
        platform::ShowError("Choose the weight, fuel and arm units");
        return std::nullopt;
    }
    r.WeightUnits = weightUnits_;
    r.FuelUnits = fuelUnits_;
    r.ArmUnits = armUnits_;

    auto dec = [this](Field f, double lo, double hi, double& out) {
        auto v = Decimal(fields_[f], Label(f), lo, hi);
        if (v)
            out = *v;
        return v.has_value();
    };
    auto speed = [this](Field f, std::int16_t& out) {
        auto v = Whole(fields_[f], Label(f), 1, 999);
        if (v)
            out = static_cast<std::int16_t>(*v);
        return v.has_value();
    };
    auto weight = [this](Field f, std::int64_t lo, std::int32_t& out) {
        auto v = Whole(fields_[f], Label(f), lo, static_cast<std::int64_t>(kMaxWeight));
        if (v)
            out = *v;
        return v.has_value();
    };
    if (!dec(kClimbRate, 0, 20000, r.ClimbRate) || !speed(kClimbTas, r.ClimbTas) ||
        !dec(kClimbFuelFlow, 0, 10000, r.ClimbFuelFlow) || !speed(kCruiseTas, r.CruiseTas) ||
        !dec(kCruiseFuelFlow, 0, 10000, r.CruiseFuelFlow) ||
        !dec(kDescentRate, 0, 20000, r.DescentRate) || !speed(kDescentTas, r.DescentTas) ||
        !dec(kDescentFuelFlow, 0, 10000, r.DescentFuelFlow) ||
        !dec(kTaxiFuel, 0, 10000, r.TaxiFuel) || !weight(kEmptyWeight, 1, r.EmptyWeight) ||
        !dec(kEmptyArm, -kMaxArm, kMaxArm, r.EmptyArm) ||
        !weight(kMaxTakeoffWeight, 1, r.MaxTakeoffWeight) ||
        !weight(kMaxRampWeight, 0, r.MaxRampWeight) ||
        !weight(kMaxLandingWeight, 0, r.MaxLandingWeight) ||
        !weight(kMaxZeroFuelWeight, 0, r.MaxZeroFuelWeight) ||
        !dec(kGraphArmMin, -kMaxArm, kMaxArm, r.GraphArmMin) ||
        !dec(kGraphArmMax, -kMaxArm, kMaxArm, r.GraphArmMax) ||
        !dec(kGraphWeightMin, 0, kMaxWeight, r.GraphWeightMin) ||
        !dec(kGraphWeightMax, 0, kMaxWeight, r.GraphWeightMax))
        return std::nullopt;
    if (r.EmptyWeight > r.MaxTakeoffWeight) {
        platform::ShowError("The empty weight is above the max take-off weight");
        return std::nullopt;
    }
    if (r.MaxRampWeight != 0 && r.MaxRampWeight < r.MaxTakeoffWeight) {
        platform::ShowError("The max ramp weight is below the max take-off weight");
        return std::nullopt;
    }
    if (r.MaxZeroFuelWeight != 0 && r.MaxZeroFuelWeight > r.MaxTakeoffWeight) {
        platform::ShowError("The max zero-fuel weight is above the max take-off weight");
        return std::nullopt;
    }
    // Both ends 0: the graph fits the envelope and the loaded point itself.
    bool armAuto = r.GraphArmMin == 0.0 && r.GraphArmMax == 0.0;
    bool weightAuto = r.GraphWeightMin == 0.0 && r.GraphWeightMax == 0.0;
    if ((!armAuto && r.GraphArmMin >= r.GraphArmMax) ||
        (!weightAuto && r.GraphWeightMin >= r.GraphWeightMax)) {
        platform::ShowError(
            "Graph ranges: the first figure must be below the second (both 0: fit the envelope)");
        return std::nullopt;
    }

    stations.clear();
    std::vector<std::u16string> seen;
    for (std::size_t i = 0; i < stations_.size(); ++i) {
        const StationRow& row = stations_[i];
        StationRecord s;
        s.AircraftName = r.Name;
        s.StationName = Utf8ToUtf16(Trimmed(row.Name));
        s.StationKind = row.Kind;
        std::string which = "Station " + std::to_string(i + 1);
        if (s.StationName.empty() || s.StationName.size() > kMaxNameChars) {
            platform::ShowError(which + ": enter a name of 1 to 23 characters");
            return std::nullopt;
        }
        for (const std::u16string& name : seen)
            if (name == Upper(s.StationName)) {
                platform::ShowError(which + ": there is already a station " + Trimmed(row.Name));
                return std::nullopt;
            }
        seen.push_back(Upper(s.StationName));
        if (row.Kind == 1) {
            s.Arm = r.EmptyArm;
            s.Weight = r.EmptyWeight;
        } else {
            auto arm = Decimal(row.Arm, Trimmed(row.Name) + " arm (" + ArmUnitName(armUnits_) + ")",
                               -kMaxArm, kMaxArm);
            if (!arm)
                return std::nullopt;
            s.Arm = *arm;
        }
        stations.push_back(std::move(s));
    }

    points.clear();
    std::vector<EnvelopePoint> corners;
    for (std::size_t i = 0; i < points_.size(); ++i) {
        std::string which = "Envelope point " + std::to_string(i + 1);
        auto arm = Decimal(points_[i].Arm, which + " arm (" + ArmUnitName(armUnits_) + ")",
                           -kMaxArm, kMaxArm);
        if (!arm)
            return std::nullopt;
        auto w = Whole(points_[i].Weight, which + " weight (" + WeightUnitName(weightUnits_) + ")",
                       0, static_cast<std::int64_t>(kMaxWeight));
        if (!w)
            return std::nullopt;
        corners.push_back({*arm, static_cast<double>(*w)});
    }
    if (!corners.empty() && DistinctCorners(corners).size() < 3) {
        platform::ShowError("The envelope needs at least 3 different points (or none)");
        return std::nullopt;
    }
    if (!corners.empty()) {
        // Kept closed: the last point repeats the first.
        if (corners.front().Arm != corners.back().Arm ||
            corners.front().Weight != corners.back().Weight)
            corners.push_back(corners.front());
        std::int16_t n = 1;
        for (const EnvelopePoint& c : corners) {
            EnvelopePointRecord p;
            p.PointNumber = n++;
            p.AircraftName = r.Name;
            p.Arm = c.Arm;
            p.Weight = static_cast<std::int32_t>(c.Weight);
            points.push_back(std::move(p));
        }
    }
    return r;
}

bool AircraftEditDialog::Ok(SettingsState& settings) {
    std::vector<StationRecord> stations;
    std::vector<EnvelopePointRecord> points;
    auto checked = Check(stations, points);
    if (!checked)
        return false;
    const AircraftRecord& r = *checked;

    // What the aircraft had before, removed only once the new rows are all written.
    // Rows left under the new name by an aircraft deleted elsewhere would join this one: they go
    // too.
    std::vector<StoredStation> oldStations;
    std::vector<StoredEnvelopePoint> oldPoints;
    std::vector<std::u16string> names;
    if (oid_ != 0 && !originalName_.empty())
        names.push_back(originalName_);
    if (oid_ == 0 || r.Name != originalName_)
        names.push_back(r.Name);
    for (const std::u16string& name : names) {
        for (auto& s : ReadStations(name))
            oldStations.push_back(std::move(s));
        for (auto& p : ReadEnvelopePoints(name))
            oldPoints.push_back(std::move(p));
    }
    // The aircraft, its stations and its envelope change together or not at all.
    RecordTransaction tx;
    if (!tx.Open())
        return false;
    DbHandle ac = OpenDatabase(schema::kAircraftName, schema::kAcName);
    DbHandle st = OpenDatabase(schema::kStationsName, schema::kStKind);
    DbHandle env = OpenEnvelopes();
    if (!ac || !st || !env)
        return false;
    bool written = true;
    for (std::size_t i = 0; written && i < stations.size(); ++i)
        written = WriteStation(st, stations[i]) != 0;
    for (std::size_t i = 0; written && i < points.size(); ++i)
        written = WriteEnvelopePoint(env, points[i]) != 0;
    platform::CeOid id = written ? WriteAircraft(ac, r, oid_) : 0;
    st.Close();
    env.Close();
    ac.Close();
    if (id == 0)
        return false;  // the transaction keeps none of it: the aircraft keeps what it had
    for (const StoredStation& s : oldStations)
        DeleteStation(s.Oid);
    for (const StoredEnvelopePoint& p : oldPoints)
        DeleteEnvelopePoint(p.Oid);
    if (!tx.Commit())
        return false;

    if (oid_ != 0 && !originalName_.empty() && settings.AircraftReg.view() == originalName_)
        settings.AircraftReg.assign(r.Name);
    oid_ = id;
    original_ = r;
    originalName_ = r.Name;
    savedName_ = r.Name;
    return true;
}

}  // namespace aerix
