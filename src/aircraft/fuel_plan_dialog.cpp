#include "aircraft/fuel_plan_dialog.hpp"

#include <cstdio>
#include <limits>

#include "platform/numeric.hpp"
#include "platform/services.hpp"
#include "store/record_store.hpp"

namespace aerix {

namespace {

std::string Format(const char* format, double value) {
    char buf[64];
    std::snprintf(buf, sizeof buf, format, value);
    return buf;
}

// An unsigned whole-number entry as the integer fields read it: anything else is 0.
unsigned UnsignedEntry(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && text[i] == ' ')
        ++i;
    std::size_t end = text.size();
    while (end > i && text[end - 1] == ' ')
        --end;
    if (i == end)
        return 0;
    std::uint64_t value = 0;
    for (std::size_t k = i; k < end; ++k) {
        char c = text[k];
        if (c < '0' || c > '9')
            return 0;
        value = value * 10 + static_cast<unsigned>(c - '0');
        if (value > 0xFFFFFFFFu)
            return 0;
    }
    return static_cast<unsigned>(value);
}

void SetTitle(std::string_view title) {
    if (platform::Sys().ui)
        platform::Sys().ui->SetTitle(title);
}

}  // namespace

std::string FuelUnitName(unsigned code) {
    switch (code) {
        case 1:
            return "lb";
        case 2:
            return "kg";
        case 3:
            return "ltr";
        case 4:
            return "Impgal";
        case 5:
            return "Usgal";
        default:
            return {};
    }
}

std::string FuelUnitsLabel(unsigned code) {
    std::string unit = FuelUnitName(code);
    return unit.empty() ? unit : "Fuel units: " + unit;
}

void FuelPlanDialog::Open() {
    SetTitle(kTitle);
    if (aircraft_.FuelUnits >= 1 && aircraft_.FuelUnits <= 5)
        units_ = FuelUnitsLabel(aircraft_.FuelUnits);

    // By phase: 0 climb, 1 cruise, 2 descent.
    double sums[3] = {0.0, 0.0, 0.0};
    bool flyable[3] = {true, true, true};
    std::uint32_t count = 0;
    DbHandle h = OpenDatabase(settings_.ActivePlanName.view(), schema::kSecNumber, &count);
    if (h && count != 0) {
        SectorRecord s;
        while (ReadSector(h, kFromCurrent, 0, s) != 0) {
            if (s.Phase >= 1 && s.Phase <= 3) {
                sums[s.Phase - 1] += s.Fuel;
                // A headwind at or above the airspeed leaves a negative or endless fuel figure.
                if (s.GroundSpeed <= 0)
                    flyable[s.Phase - 1] = false;
            }
            s = SectorRecord{};
        }
        std::string* fields[3] = {&climb_, &cruise_, &descent_};
        for (int p = 0; p < 3; ++p)
            *fields[p] = flyable[p] ? Format("%1.1f", sums[p]) : std::string(kUnknownFuel);
    }
    taxi_ = Format("%1.1f", aircraft_.TaxiFuel);
    flyable_ = flyable[0] && flyable[1] && flyable[2];
    trip_ = sums[2] + sums[1] + sums[0];
    aircraft_.PlanTripFuel = TripOrNan();

    unsigned total = 0;
    if (settings_.FuelCalc == 1) {
        calculate_ = true;
        holding_ = "0";
        contingency_ = "0";
        // The contingency term is zero here but still computed.
        total = static_cast<unsigned>(TruncInt32(trip_ + trip_ * 0.0 + aircraft_.TaxiFuel + 0.5));
    } else {
        calculate_ = false;
        inTanks_ = "0";
        reserve_ =
            flyable_ ? Format("%1.0f", -aircraft_.TaxiFuel - trip_) : std::string(kUnknownFuel);
        total = 0;
    }
    StoreResults(total, flyable_ || !calculate_);
}

void FuelPlanDialog::ChooseCalculate() {
    settings_.FuelCalc = 1;
    RecalculateFromHolding();
    calculate_ = true;
}

void FuelPlanDialog::ChooseLoaded() {
    RecalculateFromInTanks();
    settings_.FuelCalc = 0;
    calculate_ = false;
}

void FuelPlanDialog::SetHolding(std::string_view text) {
    holding_ = text;
    RecalculateFromHolding();
}

void FuelPlanDialog::SetContingency(std::string_view text) {
    contingency_ = text;
    RecalculateFromHolding();
}

void FuelPlanDialog::SetInTanks(std::string_view text) {
    inTanks_ = text;
    RecalculateFromInTanks();
}

int FuelPlanDialog::Close(int code) {
    SetTitle("Aerix");
    return code;
}

void FuelPlanDialog::RecalculateFromHolding() {
    unsigned holding = UnsignedEntry(holding_);
    unsigned contingency = UnsignedEntry(contingency_);
    unsigned total = static_cast<unsigned>(TruncInt32(trip_ * contingency * 0.01 + trip_ +
                                                      aircraft_.TaxiFuel + 0.5)) +
                     holding;
    StoreResults(total, flyable_);
}

void FuelPlanDialog::RecalculateFromInTanks() {
    unsigned inTanks = UnsignedEntry(inTanks_);
    reserve_ = flyable_ ? Format("%1.0f", inTanks - aircraft_.TaxiFuel - trip_)
                        : std::string(kUnknownFuel);
    StoreResults(inTanks, true);
}

void FuelPlanDialog::StoreResults(unsigned total, bool known) {
    // An unflyable sector makes the sums meaningless: no figure rather than a wrapped one.
    total_ = known ? std::to_string(total) : std::string(kUnknownFuel);
    aircraft_.PlanTripFuel = TripOrNan();
    aircraft_.PlanTotalFuel = known ? total : 0;
}

double FuelPlanDialog::TripOrNan() const {
    return flyable_ ? trip_ : std::numeric_limits<double>::quiet_NaN();
}

}  // namespace aerix
