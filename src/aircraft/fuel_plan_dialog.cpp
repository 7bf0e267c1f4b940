#include "aircraft/fuel_plan_dialog.hpp"

#include <cstdio>

#include "app/state/app_state.hpp"
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

std::string FuelUnitsLabel(unsigned code) {
    switch (code) {
        case 1:
            return "Fuel units: lb";
        case 2:
            return "Fuel units: kg";
        case 3:
            return "Fuel units: ltr";
        case 4:
            return "Fuel units: Impgal";
        case 5:
            return "Fuel units: Usgal";
        default:
            return {};
    }
}

void FuelPlanDialog::Open() {
    SetTitle(kTitle);
    if (g_app.FuelUnits >= 1 && g_app.FuelUnits <= 5)
        units_ = FuelUnitsLabel(g_app.FuelUnits);

    double climb = 0.0, cruise = 0.0, descent = 0.0;
    std::uint32_t count = 0;
    DbHandle h = OpenDatabase(g_app.ActivePlanName.view(), schema::kSecNumber, &count);
    if (h && count != 0) {
        SectorRecord s;
        while (ReadSector(h, kFromCurrent, 0, s) != 0) {
            if (s.Phase == 1)
                climb += s.Fuel;
            else if (s.Phase == 2)
                cruise += s.Fuel;
            else if (s.Phase == 3)
                descent += s.Fuel;
            s = SectorRecord{};
        }
        climb_ = Format("%1.1f", climb);
        cruise_ = Format("%1.1f", cruise);
        descent_ = Format("%1.1f", descent);
    }
    taxi_ = Format("%1.1f", g_app.TaxiFuel);
    trip_ = descent + cruise + climb;
    g_app.PlanTripFuel = trip_;

    unsigned total = 0;
    if (g_app.FuelCalc == 1) {
        calculate_ = true;
        holding_ = "0";
        contingency_ = "0";
        // The contingency term is zero here but still computed.
        total = static_cast<unsigned>(TruncInt32(trip_ + trip_ * 0.0 + g_app.TaxiFuel + 0.5));
    } else {
        calculate_ = false;
        inTanks_ = "0";
        reserve_ = Format("%1.0f", -g_app.TaxiFuel - trip_);
        total = 0;
    }
    StoreResults(total);
}

void FuelPlanDialog::ChooseCalculate() {
    g_app.FuelCalc = 1;
    RecalculateFromHolding();
    calculate_ = true;
}

void FuelPlanDialog::ChooseLoaded() {
    RecalculateFromInTanks();
    g_app.FuelCalc = 0;
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
    unsigned total = static_cast<unsigned>(
                         TruncInt32(trip_ * contingency * 0.01 + trip_ + g_app.TaxiFuel + 0.5)) +
                     holding;
    StoreResults(total);
}

void FuelPlanDialog::RecalculateFromInTanks() {
    unsigned inTanks = UnsignedEntry(inTanks_);
    reserve_ = Format("%1.0f", inTanks - g_app.TaxiFuel - trip_);
    StoreResults(inTanks);
}

void FuelPlanDialog::StoreResults(unsigned total) {
    total_ = std::to_string(total);
    g_app.PlanTripFuel = trip_;
    g_app.PlanTotalFuel = total;
}

}  // namespace aerix
