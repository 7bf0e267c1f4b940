// wb and aircraft show: weight and balance of an aircraft for given loads, and everything the
// aircraft's set-up holds, from the same store and computation as the dialogs.
#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "aircraft/aircraft.hpp"
#include "aircraft/aircraft_setup_dialog.hpp"
#include "aircraft/weight_balance.hpp"
#include "aircraft/weight_balance_dialogs.hpp"
#include "app/app_state.hpp"
#include "app/default_data.hpp"
#include "app/start_up.hpp"
#include "platform/text.hpp"
#include "settings/settings.hpp"
#include "store/record_store.hpp"
#include "tools/tool_context.hpp"
#include "utilities/entry_text.hpp"

namespace aerix::tools {

namespace {

std::string Upper(std::string s) {
    for (char& c : s)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return s;
}

std::string Joined(const std::vector<std::string>& names) {
    std::string out;
    for (const std::string& n : names)
        out += (out.empty() ? "" : ", ") + n;
    return out.empty() ? "none" : out;
}

// The aircraft named on the command line (or the current one), or a failure listing them all.
AircraftRecord AircraftNamed(const std::string& reg, platform::CeOid* oid = nullptr) {
    std::u16string name =
        reg.empty() ? std::u16string(g_app.settings.AircraftReg.view()) : Utf8ToUtf16(reg);
    AircraftRecord a;
    if (!name.empty() && FindAircraft(name, a, oid))
        return a;
    std::vector<std::string> regs;
    for (const AircraftRecord& r : ListAircraft())
        regs.push_back(Utf16ToUtf8(r.Name));
    throw ToolFailure((reg.empty() ? std::string("no current aircraft")
                                   : "no aircraft registered \"" + reg + "\"") +
                      " (aircraft: " + Joined(regs) + ")");
}

struct WbArgs {
    std::string aircraft;
    std::vector<std::string> loads;
    std::optional<double> fuel;
};

void RunWeightBalance(ToolContext& ctx, const WbArgs& args) {
    ctx.OpenStore();
    StartUp(g_app);
    AircraftRecord a = AircraftNamed(args.aircraft);
    std::vector<StationLoad> loads;
    std::vector<std::string> names;
    bool basic = false;
    for (const StoredStation& s : ReadStations(a.Name)) {
        const StationRecord& r = s.Record;
        bool isBasic = r.StationKind == 1;
        basic = basic || isBasic;
        loads.push_back({r.StationName, r.StationKind, isBasic ? a.EmptyArm : r.Arm,
                         isBasic ? static_cast<double>(a.EmptyWeight) : 0.0});
        names.push_back(Utf16ToUtf8(r.StationName));
    }
    if (!basic)
        loads.insert(loads.begin(), {u"APS", 1, a.EmptyArm, static_cast<double>(a.EmptyWeight)});

    const std::string reg = Utf16ToUtf8(a.Name);
    std::vector<bool> given(loads.size(), false);
    double fuelQuantity = 0.0;
    auto load = [&](std::size_t i, double value, const std::string& what) {
        if (given[i])
            throw ToolFailure(what + ": " + Utf16ToUtf8(loads[i].Name) + " is loaded twice");
        given[i] = true;
        if (loads[i].Kind == 2) {
            // Fuel stations take the quantity in the aircraft's fuel units.
            fuelQuantity += value;
            loads[i].FuelQuantity = value;
            loads[i].Weight = FuelWeight(value, a.FuelUnits, a.WeightUnits);
            if (!std::isfinite(loads[i].Weight))
                throw ToolFailure(reg + " has unknown fuel or weight units");
        } else {
            loads[i].Weight = value;
        }
    };
    auto quantity = [&](const std::string& text, const std::string& what) {
        auto v = ParseDecimal(text);
        if (!v || *v < 0.0 || *v > 100000.0)
            throw ToolFailure(what +
                              ": the weight must be a number from 0 to 100000 (stations of " + reg +
                              ": " + Joined(names) + ")");
        return *v;
    };
    for (const std::string& arg : args.loads) {
        std::size_t eq = arg.rfind('=');
        std::string what = "--load " + arg;
        if (eq == std::string::npos || eq == 0)
            throw ToolFailure(what + ": write STATION=WEIGHT (stations of " + reg + ": " +
                              Joined(names) + ")");
        std::string station = Upper(arg.substr(0, eq));
        std::size_t i = 0;
        while (i < loads.size() && Upper(Utf16ToUtf8(loads[i].Name)) != station)
            ++i;
        if (i == loads.size())
            throw ToolFailure(what + ": no station \"" + arg.substr(0, eq) + "\" on " + reg +
                              " (stations: " + Joined(names) + ")");
        if (loads[i].Kind == 1)
            throw ToolFailure(what + ": " + Utf16ToUtf8(loads[i].Name) +
                              " is the aircraft's empty weight, set in its set-up");
        load(i, quantity(arg.substr(eq + 1), what), what);
    }
    if (args.fuel) {
        if (!(*args.fuel >= 0.0 && *args.fuel <= 100000.0))
            throw ToolFailure("--fuel: the quantity must be a number from 0 to 100000");
        std::size_t i = 0;
        while (i < loads.size() && loads[i].Kind != 2)
            ++i;
        if (i == loads.size())
            throw ToolFailure(reg + " has no fuel station (stations: " + Joined(names) + ")");
        load(i, *args.fuel, "--fuel");
    }

    std::vector<EnvelopePoint> envelope = EnvelopeOf(a.Name);
    WeightBalanceResult r = ComputeWeightBalance(a, loads, envelope);
    Json stations = Json::array();
    for (const StationLoad& l : loads)
        stations.push_back(
            {{"station", Utf16ToUtf8(l.Name)}, {"arm", l.Arm}, {"weight", l.Weight}});
    ctx.Out().Emit({{"weight", r.Weight},
                    {"moment", r.Moment},
                    {"arm", r.Arm},
                    {"withinEnvelope", r.Within()},
                    {"verdict", r.Verdict()},
                    {"aircraft", reg},
                    {"fuelQuantity", fuelQuantity},
                    {"fuelUnits", FuelUnitName(a.FuelUnits)},
                    {"fuelWeight", r.FuelWeight},
                    {"takeoffWeight", r.TakeoffWeight},
                    {"zeroFuelWeight", r.ZeroFuelWeight},
                    {"zeroFuelArm", r.ZeroFuelArm},
                    {"hasEnvelope", r.HasEnvelope},
                    {"insideEnvelope", r.InsideEnvelope},
                    {"envelopeSide", r.Side},
                    {"limits", r.LimitsExceeded},
                    {"weightUnits", WeightUnitName(a.WeightUnits)},
                    {"armUnits", ArmUnitName(a.ArmUnits)},
                    {"stations", stations}});
}

void ShowAircraft(ToolContext& ctx, const std::string& reg) {
    ctx.OpenStore();
    StartUp(g_app);
    platform::CeOid oid = 0;
    AircraftRecord a = AircraftNamed(reg, &oid);
    auto form = AircraftEditDialog::ForEdit(oid);
    if (!form)
        throw ToolFailure("cannot read aircraft " + reg);
    Json out;
    for (int f = 0; f < AircraftEditDialog::kFieldCount; ++f) {
        auto field = static_cast<AircraftEditDialog::Field>(f);
        out[form->Label(field)] = form->Text(field);
    }
    out["Weight units"] = WeightUnitName(a.WeightUnits);
    out["Fuel units"] = FuelUnitName(a.FuelUnits);
    out["Arm units"] = ArmUnitName(a.ArmUnits);
    out["Current"] = a.Name == g_app.settings.AircraftReg.view();
    static const char* kKinds[] = {"", "basic", "fuel", "seats", "baggage"};
    Json stations = Json::array();
    for (const StoredStation& s : ReadStations(a.Name)) {
        int kind = s.Record.StationKind;
        stations.push_back({{"name", Utf16ToUtf8(s.Record.StationName)},
                            {"kind", kind >= 1 && kind <= 4 ? kKinds[kind] : "?"},
                            {"arm", s.Record.Arm},
                            {"weight", s.Record.Weight}});
    }
    out["Stations"] = stations;
    Json points = Json::array();
    for (const EnvelopePoint& p : EnvelopeOf(a.Name))
        points.push_back({p.Arm, p.Weight});
    out["Envelope (arm, weight)"] = points;
    ctx.Out().Emit(out);
}

}  // namespace

void AddWeightBalanceCommands(CLI::App& app, ToolContext& ctx) {
    auto args = std::make_shared<WbArgs>();
    auto* wb = app.add_subcommand(
        "wb", "Weight and balance: total weight, moment, centre of gravity and the verdict");
    wb->add_option("--aircraft", args->aircraft, "Registration (default: the current aircraft)");
    wb->add_option("--load", args->loads,
                   "STATION=WEIGHT in the aircraft's weight units (fuel stations: fuel units); "
                   "station names match without regard to case");
    wb->add_option("--fuel", args->fuel, "Fuel in the aircraft's fuel units, to its fuel station");
    wb->callback([&ctx, args] { RunWeightBalance(ctx, *args); });

    // "aircraft" has its list and use commands already.
    CLI::App* aircraft = app.get_subcommand("aircraft");
    auto reg = std::make_shared<std::string>();
    auto* show = aircraft->add_subcommand(
        "show", "Every figure of an aircraft with its units, its stations and its envelope");
    show->add_option("REG", *reg, "Registration")->required();
    show->callback([&ctx, reg] { ShowAircraft(ctx, *reg); });
}

}  // namespace aerix::tools
