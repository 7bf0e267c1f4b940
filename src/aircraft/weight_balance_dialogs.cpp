#include "aircraft/weight_balance_dialogs.hpp"

#include <cmath>
#include <cstdio>
#include <optional>

#include "aircraft/aircraft.hpp"
#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "platform/text.hpp"
#include "utilities/entry_text.hpp"

namespace aerix {

namespace {

constexpr double kMaxLoad = 100000.0;

void SetTitle(std::string_view title) {
    if (platform::Sys().ui)
        platform::Sys().ui->SetTitle(title);
}

std::string Fixed(double value, int decimals) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.*f", decimals, value);
    return buf;
}

// Empty reads as nothing loaded.
std::optional<double> LoadEntry(std::string_view text) {
    std::size_t i = text.find_first_not_of(' ');
    if (i == std::string_view::npos)
        return 0.0;
    auto v = ParseDecimal(text);
    if (!v || *v < 0.0 || *v > kMaxLoad)
        return std::nullopt;
    return v;
}

}  // namespace

std::vector<EnvelopePoint> EnvelopeOf(std::u16string_view aircraft) {
    std::vector<EnvelopePoint> out;
    for (const auto& p : ReadEnvelopePoints(aircraft))
        out.push_back({p.Record.Arm, static_cast<double>(p.Record.Weight)});
    return out;
}

bool WeightBalanceLoadingDialog::Open() {
    SetTitle(kTitle);
    rows_.clear();
    if (settings_.AircraftReg.view().empty() ||
        !FindAircraft(settings_.AircraftReg.view(), aircraft_)) {
        platform::ShowError("No current aircraft - choose one with Setup A/c");
        return false;
    }
    const AircraftLoading& last = state_.WbLoading;
    bool again = last.Aircraft == aircraft_.Name;
    bool basicSeen = false;
    for (const StoredStation& s : ReadStations(aircraft_.Name)) {
        Row row;
        row.Station = s.Record;
        if (s.Record.StationKind == 1) {
            // The basic row is the aircraft as prepared for service.
            row.Fixed = true;
            row.Station.Weight = aircraft_.EmptyWeight;
            row.Station.Arm = aircraft_.EmptyArm;
            row.Text = std::to_string(aircraft_.EmptyWeight);
            basicSeen = true;
        } else if (again) {
            for (const StationLoad& l : last.Loads)
                if (l.Name == s.Record.StationName && l.Kind == s.Record.StationKind)
                    row.Text = FormatFigure(s.Record.StationKind == 2 ? l.FuelQuantity : l.Weight);
        }
        rows_.push_back(std::move(row));
    }
    if (!basicSeen) {
        Row basic;
        basic.Station.AircraftName = aircraft_.Name;
        basic.Station.StationName = u"APS";
        basic.Station.StationKind = 1;
        basic.Station.Arm = aircraft_.EmptyArm;
        basic.Station.Weight = aircraft_.EmptyWeight;
        basic.Text = std::to_string(aircraft_.EmptyWeight);
        basic.Fixed = true;
        rows_.insert(rows_.begin(), std::move(basic));
    }
    return true;
}

std::string WeightBalanceLoadingDialog::Label(std::size_t row) const {
    const StationRecord& s = rows_.at(row).Station;
    std::string units = s.StationKind == 2 ? FuelUnitName(aircraft_.FuelUnits)
                                           : WeightUnitName(aircraft_.WeightUnits);
    std::string label = Utf16ToUtf8(s.StationName);
    return units.empty() ? label : label + " (" + units + ")";
}

std::string WeightBalanceLoadingDialog::Note(std::size_t row) const {
    const Row& r = rows_.at(row);
    if (r.Station.StationKind != 2)
        return {};
    auto q = LoadEntry(r.Text);
    if (!q)
        return {};
    double w = FuelWeight(*q, aircraft_.FuelUnits, aircraft_.WeightUnits);
    if (!std::isfinite(w))
        return {};
    return "= " + Fixed(w, 1) + " " + WeightUnitName(aircraft_.WeightUnits);
}

void WeightBalanceLoadingDialog::SetText(std::size_t row, std::string_view text) {
    if (row < rows_.size() && !rows_[row].Fixed)
        rows_[row].Text = text;
}

bool WeightBalanceLoadingDialog::Ok() {
    AircraftLoading loading;
    loading.Aircraft = aircraft_.Name;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const Row& r = rows_[i];
        StationLoad load{r.Station.StationName, r.Station.StationKind, r.Station.Arm, 0.0};
        if (r.Fixed) {
            load.Weight = r.Station.Weight;
        } else {
            bool fuel = r.Station.StationKind == 2;
            auto v = LoadEntry(r.Text);
            if (!v) {
                platform::ShowError(Utf16ToUtf8(r.Station.StationName) +
                                    (fuel ? ": enter a fuel quantity from 0 to 100000 "
                                          : ": enter a weight from 0 to 100000 ") +
                                    (fuel ? FuelUnitName(aircraft_.FuelUnits)
                                          : WeightUnitName(aircraft_.WeightUnits)));
                return false;
            }
            if (fuel) {
                loading.FuelQuantity += *v;
                load.FuelQuantity = *v;
                load.Weight = FuelWeight(*v, aircraft_.FuelUnits, aircraft_.WeightUnits);
                if (!std::isfinite(load.Weight)) {
                    platform::ShowError(Utf16ToUtf8(aircraft_.Name) +
                                        ": unknown fuel or weight units - check Setup A/c");
                    return false;
                }
            } else {
                load.Weight = *v;
            }
        }
        loading.Loads.push_back(std::move(load));
    }
    state_.WbLoading = std::move(loading);
    return true;
}

void WeightBalanceLoadingDialog::Close() {
    SetTitle("Aerix");
}

bool WeightBalanceResultDialog::Open() {
    SetTitle(kTitle);
    const AircraftLoading& loading = state_.WbLoading;
    if (loading.Aircraft.empty() || !FindAircraft(loading.Aircraft, aircraft_)) {
        platform::ShowError("Enter the loads first (Wt. Bal)");
        return false;
    }
    envelope_ = EnvelopeOf(aircraft_.Name);
    result_ = ComputeWeightBalance(aircraft_, loading.Loads, envelope_);
    return true;
}

void WeightBalanceResultDialog::Close() {
    SetTitle("Aerix");
}

std::vector<std::pair<std::string, std::string>> WeightBalanceResultDialog::Figures() const {
    std::string w = WeightUnitName(aircraft_.WeightUnits);
    std::string a = ArmUnitName(aircraft_.ArmUnits);
    std::string m = w.empty() || a.empty() ? std::string() : w + "." + a;
    auto with = [](std::string figure, const std::string& units) {
        return units.empty() ? figure : figure + " " + units;
    };
    const WeightBalanceResult& r = result_;
    return {
        {"Weight", with(Fixed(r.Weight, 1), w)},
        {"Moment", with(Fixed(r.Moment, 0), m)},
        {"CG arm", with(Fixed(r.Arm, 2), a)},
        {"Fuel", with(Fixed(r.FuelWeight, 1), w)},
        {"Take-off", with(Fixed(r.TakeoffWeight, 1), w)},
        {"Zero fuel", with(Fixed(r.ZeroFuelWeight, 1), w) + " @ " + Fixed(r.ZeroFuelArm, 2)},
    };
}

std::vector<std::string> WeightBalanceResultDialog::VerdictLines() const {
    std::vector<std::string> lines{result_.Verdict()};
    if (!result_.HasEnvelope) {
        lines.push_back("the aircraft has fewer than 3 envelope points");
    } else if (!result_.InsideEnvelope) {
        std::string arm = ArmUnitName(aircraft_.ArmUnits);
        std::string weight = WeightUnitName(aircraft_.WeightUnits);
        lines.push_back("CG " + Fixed(result_.Arm, 2) + (arm.empty() ? "" : " " + arm) + " " +
                        result_.Side + " the envelope at " + Fixed(result_.Weight, 0) +
                        (weight.empty() ? "" : " " + weight));
    }
    for (const std::string& limit : result_.LimitsExceeded)
        lines.push_back("over " + limit);
    if (result_.HasEnvelope && result_.FuelWeight > 0.0 && !result_.ZeroFuelInsideEnvelope)
        lines.push_back("zero-fuel point outside the envelope");
    return lines;
}

}  // namespace aerix
