// plan, fuel, aircraft: flight plans and their sectors, the fuel plan and
// the current aircraft, each changing the store exactly as the matching dialog does.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>

#include "aircraft/aircraft.hpp"
#include "aircraft/fuel_plan_dialog.hpp"
#include "app/app_state.hpp"
#include "app/default_data.hpp"
#include "app/start_up.hpp"
#include "planning/flight_log.hpp"
#include "planning/plan_dialogs.hpp"
#include "planning/sector_computation.hpp"
#include "planning/sector_dialog.hpp"
#include "planning/waypoint_search.hpp"
#include "planning/wind_table.hpp"
#include "planning/wind_table_dialog.hpp"
#include "platform/text.hpp"
#include "settings/settings.hpp"
#include "store/record_store.hpp"
#include "tools/tool_context.hpp"

namespace aerix::tools {

namespace {

using platform::PropVal;

// FROM or TO: "LAT,LON" in decimal degrees, else a waypoint of the navigation database, searched
// by name (by ident with --icao, as the dialogs do with IcaoSearch). When no name matches, an
// ident typed without --icao is taken if it matches exactly. An exact name or ident wins over
// partial matches.
SectorEnd Resolve(ToolContext& ctx, const std::string& text) {
    if (text.find(',') != std::string::npos) {
        if (auto end = SectorEndAt(text))
            return *end;
        throw ToolFailure("\"" + text + "\": not LAT,LON in decimal degrees");
    }
    std::size_t before = ctx.Ui().BoxTexts().size();
    std::u16string wide = Utf8ToUtf16(text);
    auto found = SearchWaypoints(g_app.settings, g_app.nav, wide);
    if (found.empty() && g_app.settings.IcaoSearch == 0 && ctx.Ui().BoxTexts().size() == before) {
        g_app.settings.IcaoSearch = 1;
        for (auto& w : SearchWaypoints(g_app.settings, g_app.nav, wide))
            if (w.Ident == wide)
                found.push_back(std::move(w));
        g_app.settings.IcaoSearch = 0;
    }
    if (found.empty()) {
        if (ctx.Ui().BoxTexts().size() > before)
            ctx.FailWithLastBox(before, "");
        throw ToolFailure("no waypoint matches \"" + text + "\" in " +
                          g_app.settings.NavDatabaseName.utf8());
    }
    std::vector<WaypointRecord> exact;
    for (const auto& w : found)
        if (w.Name == wide || w.Ident == wide)
            exact.push_back(w);
    if (exact.size() == 1)
        return SectorEndOf(exact.front());
    if (found.size() == 1)
        return SectorEndOf(found.front());
    std::string names;
    for (std::size_t i = 0; i < found.size() && i < 10; ++i)
        names +=
            (i ? ", " : "") + Utf16ToUtf8(found[i].Name) + " (" + Utf16ToUtf8(found[i].Ident) + ")";
    throw ToolFailure("\"" + text + "\" matches " + std::to_string(found.size()) +
                      " waypoints: " + names);
}

int PhaseCode(const std::string& phase) {
    if (phase == "climb")
        return 1;
    if (phase == "cruise")
        return 2;
    return 3;
}

struct SectorArgs {
    int index = 0;
    std::string from, to, alt, phase, variation, db;
    bool stillAir = false;
    bool wind = false;
    bool icao = false;
};

void AddSectorOptions(CLI::App* cmd, SectorArgs& a, bool required) {
    auto* alt = cmd->add_option("--alt", a.alt, "Altitude (ft)");
    auto* phase = cmd->add_option("--phase", a.phase, "Flight phase")
                      ->check(CLI::IsMember({"climb", "cruise", "descent"}));
    if (required) {
        alt->required();
        phase->required();
    }
    auto* still = cmd->add_flag("--still-air", a.stillAir, "Flown with no wind (\"000/00\")");
    if (!required)
        cmd->add_flag("--wind", a.wind, "Takes the wind table's wind again")->excludes(still);
    cmd->add_option("--variation", a.variation,
                    "Magnetic variation, degrees west positive (default: the magnetic model)");
    cmd->add_option("--db", a.db, "Navigation database to search (default: the current one)");
    cmd->add_flag("--icao", a.icao,
                  "Waypoints are searched by ICAO ident (as with IcaoSearch on); without it an "
                  "ident is taken when it matches exactly and no name matches");
}

void ApplySectorOptions(ToolContext& ctx, SectorDialog& d, const SectorArgs& a) {
    if (!a.alt.empty())
        d.SetAltitude(a.alt);
    if (!a.phase.empty())
        d.SetPhase(PhaseCode(a.phase));
    if (a.stillAir)
        d.SetStillAir(true);
    if (a.wind)
        d.SetStillAir(false);
    if (!a.to.empty())
        d.SetEnd(Resolve(ctx, a.to));
    if (!a.variation.empty())
        d.SetVariation(a.variation);
}

void CheckStart(ToolContext& ctx, SectorDialog& d, const std::string& from) {
    if (d.StartEditable()) {
        d.SetStart(Resolve(ctx, from));
        return;
    }
    // Later sectors start where the one before ends; FROM must name that point.
    const SectorEnd& start = *d.Start();
    std::u16string wide = Utf8ToUtf16(from);
    if (wide == start.name || (!start.ident.empty() && wide == start.ident))
        return;
    if (from.find(',') != std::string::npos) {
        auto at = SectorEndAt(from);
        if (at && at->latitude == start.latitude && at->longitude == start.longitude)
            return;
    }
    throw ToolFailure("the sector starts where the one before ends, at " +
                      Utf16ToUtf8(start.name.empty() ? start.ident : start.name) +
                      "; FROM must name it");
}

void RunSectorDialog(ToolContext& ctx, SectorDialog& d) {
    std::size_t before = ctx.Ui().BoxTexts().size();
    if (d.Ok() != 1)
        ctx.FailWithLastBox(before, "sector not written");
    ctx.Out().Emit(
        {{"plan", g_app.settings.ActivePlanName.utf8()}, {"sectors", g_app.plan.PlanSectorCount}});
}

void UseDb(const SectorArgs& a) {
    if (g_app.settings.ActivePlanName.empty())
        throw ToolFailure("no active plan: make one with plan new NAME");
    if (!a.db.empty())
        g_app.settings.NavDatabaseName.assign(Utf8ToUtf16(a.db));
    // The setting is back to 0 at every start, so a run of the tool chooses it itself.
    g_app.settings.IcaoSearch = a.icao ? 1 : 0;
}

bool IsPlan(const std::string& name) {
    auto plans = ListPlans();
    return std::find(plans.begin(), plans.end(), Utf8ToUtf16(name)) != plans.end();
}

// A sector that cannot be flown, or totals that include one, give dashes, not figures.
Json TotalsJson(const FlightLog& log) {
    Json totals{{"sectors", log.rows.size()}, {"distance", log.totalDistance}};
    totals["time"] = log.Flyable() ? Json(log.totalTime) : Json(std::string(kNoTime));
    totals["fuel"] = log.Flyable() ? Json(log.totalFuel) : Json(std::string(kNoFuel));
    return totals;
}

// The sector as the flight log reads it, every direction with its reference in the key.
Json LogJson(const FlightLogRow& r) {
    constexpr auto kText = LogStyle::kConsole;
    return {{"from", r.From()},
            {"to", r.To()},
            {"windTrue", r.Wind(kText)},
            {"trueCourse", r.TrueCourse(kText)},
            {"magneticHeading", r.MagHeading(kText)},
            {"distance", r.Distance()},
            {"groundSpeed", r.GroundSpeed(kText)},
            {"time", r.Time()},
            {"fuel", r.Fuel()}};
}

void PrintPlan(ToolContext& ctx) {
    FlightLog log = BuildFlightLog(g_app.settings, g_app.plan, g_app.leg);
    if (!ctx.Out().IsJson()) {
        std::cout << "Plan " << g_app.settings.ActivePlanName.utf8() << ", aircraft "
                  << g_app.settings.AircraftReg.utf8() << "\n"
                  << FlightLogTable(log, FuelUnitName(g_app.aircraft.FuelUnits));
        return;
    }
    // Each sector shaped as "db dump" prints a record, then the totals.
    auto h = platform::Sys().store->OpenDatabase(platform::kObjectStoreVolume,
                                                 g_app.settings.ActivePlanName.view(),
                                                 schema::kSecNumber, platform::kOpenAutoIncrement);
    std::vector<PropVal> props;
    for (std::size_t row = 0; h; ++row) {
        platform::CeOid oid = h.Read(props);
        if (oid == 0)
            break;
        std::string line = "{\"oid\": " + std::to_string(oid) + ", \"props\": {";
        for (std::size_t i = 0; i < props.size(); ++i) {
            Json value = std::visit(
                [](const auto& v) -> Json {
                    using T = std::decay_t<decltype(v)>;
                    if constexpr (std::is_same_v<T, std::u16string>)
                        return Utf16ToUtf8(v);
                    else if constexpr (std::is_same_v<T, std::vector<std::uint8_t>>)
                        return v.size();
                    else
                        return v;
                },
                props[i].value);
            line += (i ? ", \"" : "\"") + std::to_string(platform::PropNumber(props[i].propId)) +
                    "\": " + value.dump(-1, ' ', false, Json::error_handler_t::replace);
        }
        line += "}";
        if (row < log.rows.size())
            line += ", \"log\": " + DumpJson(LogJson(log.rows[row]));
        std::cout << line << "}\n";
    }
    ctx.Out().Emit(TotalsJson(log));
}

void AddPlan(CLI::App& app, ToolContext& ctx) {
    auto* plan = app.add_subcommand("plan", "Flight plans and their sectors");
    plan->require_subcommand(1);

    plan->add_subcommand("list", "The plans, the active one marked")->callback([&ctx] {
        ctx.OpenStore();
        StartUp(g_app);
        for (const auto& name : ListPlans())
            ctx.Out().Emit({{"name", Utf16ToUtf8(name)},
                            {"active", name == g_app.settings.ActivePlanName.view()}});
    });

    auto name = std::make_shared<std::string>();
    auto* create = plan->add_subcommand("new", "Creates an empty plan and makes it active");
    create->add_option("NAME", *name, "Plan name (at most 23 characters)")->required();
    create->callback([&ctx, name] {
        ctx.OpenStore();
        StartUp(g_app);
        std::u16string wide = Utf8ToUtf16(*name);
        if (wide.empty() || wide.size() > NewPlanDialog::kMaxName)
            throw ToolFailure("a plan name has 1 to 23 characters");
        std::size_t before = ctx.Ui().BoxTexts().size();
        NewPlanDialog d{g_app.settings, g_app.plan};
        d.SetName(wide);
        d.Ok();
        if (ctx.Ui().BoxTexts().size() > before)
            ctx.FailWithLastBox(before, "");
        SaveSettings(g_app.settings);
        ctx.Out().Emit({{"plan", *name}, {"id", g_app.settings.CurrentPlanId}});
    });

    auto* open = plan->add_subcommand("open", "Makes a plan active and recomputes it");
    open->add_option("NAME", *name, "Plan name")->required();
    open->callback([&ctx, name] {
        ctx.OpenStore();
        StartUp(g_app);
        OpenPlanDialog d{g_app.settings, g_app.plan};
        d.Open();
        const auto& entries = d.Entries();
        auto it = std::find(entries.begin(), entries.end(), Utf8ToUtf16(*name));
        if (it == entries.end())
            throw ToolFailure("no plan named \"" + *name + "\"");
        d.Choose(static_cast<int>(it - entries.begin()));
        AfterPlanOpened(g_app.settings, g_app.plan, g_app.nav);
        SaveSettings(g_app.settings);
        ctx.Out().Emit({{"plan", *name}, {"sectors", g_app.plan.PlanSectorCount}});
    });

    auto* del = plan->add_subcommand("delete", "Deletes a plan that is not the active one");
    del->add_option("NAME", *name, "Plan name")->required();
    del->callback([&ctx, name] {
        ctx.OpenStore();
        StartUp(g_app);
        DeletePlanDialog d{g_app.settings};
        d.Open();
        const auto& entries = d.Entries();
        auto it = std::find(entries.begin(), entries.end(), Utf8ToUtf16(*name));
        if (it == entries.end())
            throw ToolFailure("no plan named \"" + *name + "\"");
        std::size_t before = ctx.Ui().BoxTexts().size();
        d.Choose(static_cast<int>(it - entries.begin()));
        if (ctx.Ui().BoxTexts().size() > before)
            ctx.FailWithLastBox(before, "");
        ctx.Out().Emit({{"deleted", *name}});
    });

    auto* show = plan->add_subcommand(
        "show", "The flight log; with --json each sector as db dump prints it, then the totals");
    show->add_option("NAME", *name, "Plan (default: the active one)");
    show->callback([&ctx, name] {
        ctx.OpenStore();
        StartUp(g_app);
        if (!name->empty()) {
            if (!IsPlan(*name))
                throw ToolFailure("no plan named \"" + *name + "\"");
            g_app.settings.ActivePlanName.assign(Utf8ToUtf16(*name));
        }
        PrintPlan(ctx);
    });

    auto sa = std::make_shared<SectorArgs>();
    auto* add = plan->add_subcommand("add-sector", "Appends a sector to the active plan");
    add->add_option("FROM", sa->from, "Waypoint name or ident, or LAT,LON")->required();
    add->add_option("TO", sa->to, "Waypoint name or ident, or LAT,LON")->required();
    AddSectorOptions(add, *sa, true);
    add->callback([&ctx, sa] {
        ctx.OpenStore();
        StartUp(g_app);
        UseDb(*sa);
        SectorDialog d = SectorDialog::ForNew(g_app.settings, g_app.plan, g_app.nav);
        CheckStart(ctx, d, sa->from);
        ApplySectorOptions(ctx, d, *sa);
        RunSectorDialog(ctx, d);
    });

    auto* insert = plan->add_subcommand("insert-sector", "Inserts a sector after sector AFTER");
    insert->add_option("AFTER", sa->index, "Sector number the new one follows")->required();
    insert->add_option("TO", sa->to, "Waypoint name or ident, or LAT,LON")->required();
    AddSectorOptions(insert, *sa, true);
    insert->callback([&ctx, sa] {
        ctx.OpenStore();
        StartUp(g_app);
        UseDb(*sa);
        SectorDialog d =
            SectorDialog::ForInsert(g_app.settings, g_app.plan, g_app.nav,
                                    ZeroBased(sa->index, g_app.plan.PlanSectorCount, "sector"));
        ApplySectorOptions(ctx, d, *sa);
        RunSectorDialog(ctx, d);
    });

    auto* edit = plan->add_subcommand("edit-sector", "Changes sector INDEX");
    edit->add_option("INDEX", sa->index, "Sector number")->required();
    edit->add_option("--from", sa->from, "New start (first sector only)");
    edit->add_option("--to", sa->to, "New end");
    AddSectorOptions(edit, *sa, false);
    edit->callback([&ctx, sa] {
        ctx.OpenStore();
        StartUp(g_app);
        UseDb(*sa);
        auto d = SectorDialog::ForEdit(g_app.settings, g_app.plan, g_app.nav,
                                       ZeroBased(sa->index, g_app.plan.PlanSectorCount, "sector"));
        if (!d)
            throw ToolFailure("cannot read sector " + std::to_string(sa->index));
        if (!sa->from.empty()) {
            if (!d->StartEditable())
                throw ToolFailure("only the first sector chooses its start");
            d->SetStart(Resolve(ctx, sa->from));
        }
        ApplySectorOptions(ctx, *d, *sa);
        RunSectorDialog(ctx, *d);
    });

    auto index = std::make_shared<int>(0);
    auto* remove = plan->add_subcommand("delete-sector", "Deletes sector INDEX");
    remove->add_option("INDEX", *index, "Sector number")->required();
    remove->callback([&ctx, index] {
        ctx.OpenStore();
        StartUp(g_app);
        std::size_t before = ctx.Ui().BoxTexts().size();
        if (!DeletePlanSector(g_app.settings, g_app.plan,
                              ZeroBased(*index, g_app.plan.PlanSectorCount, "sector")))
            ctx.FailWithLastBox(before, "sector not deleted");
        ctx.Out().Emit({{"plan", g_app.settings.ActivePlanName.utf8()},
                        {"sectors", g_app.plan.PlanSectorCount}});
    });

    plan->add_subcommand("reverse", "Reverses the active plan and recomputes its route")
        ->callback([&ctx] {
            ctx.OpenStore();
            StartUp(g_app);
            std::size_t before = ctx.Ui().BoxTexts().size();
            if (!ReversePlan(g_app.settings, g_app.plan))
                ctx.FailWithLastBox(before, "plan not reversed");
            ctx.Out().Emit({{"plan", g_app.settings.ActivePlanName.utf8()},
                            {"sectors", g_app.plan.PlanSectorCount}});
        });

    auto airspeeds = std::make_shared<bool>(false);
    auto* recompute = plan->add_subcommand("recompute", "Recomputes the active plan's route");
    recompute->add_flag("--airspeeds", *airspeeds, "Takes the aircraft's true airspeeds again");
    recompute->callback([&ctx, airspeeds] {
        ctx.OpenStore();
        StartUp(g_app);
        std::size_t before = ctx.Ui().BoxTexts().size();
        if (!RecomputePlanRoute(g_app.settings, g_app.plan, *airspeeds ? 1 : 0))
            ctx.FailWithLastBox(before, "plan not recomputed");
        ctx.Out().Emit({{"plan", g_app.settings.ActivePlanName.utf8()},
                        {"sectors", g_app.plan.PlanSectorCount}});
    });
}

void AddFuel(CLI::App& app, ToolContext& ctx) {
    auto* fuel = app.add_subcommand("fuel", "The fuel plan of the active plan");
    struct Args {
        std::string contingency, holding, inTanks;
    };
    auto a = std::make_shared<Args>();
    auto* cont = fuel->add_option("--contingency", a->contingency, "% contingency");
    auto* hold = fuel->add_option("--holding", a->holding, "Holding fuel");
    fuel->add_option("--in-tanks", a->inTanks, "Fuel in the tanks (\"Fuel loaded\")")
        ->excludes(cont)
        ->excludes(hold);
    fuel->callback([&ctx, a] {
        ctx.OpenStore();
        StartUp(g_app);
        FuelPlanDialog d{g_app.settings, g_app.aircraft};
        d.Open();
        if (!a->inTanks.empty()) {
            d.ChooseLoaded();
            d.SetInTanks(a->inTanks);
        } else {
            d.ChooseCalculate();
            d.SetContingency(a->contingency.empty() ? "0" : a->contingency);
            d.SetHolding(a->holding.empty() ? "0" : a->holding);
        }
        Json out{{"units", d.UnitsLabel()}, {"mode", d.CalculateChecked() ? "calculate" : "loaded"},
                 {"climb", d.Climb()},      {"cruise", d.Cruise()},
                 {"descent", d.Descent()},  {"taxi", d.Taxi()}};
        if (d.CalculateChecked()) {
            out["contingency"] = d.Contingency();
            out["holding"] = d.Holding();
        } else {
            out["inTanks"] = d.InTanks();
            out["reserve"] = d.Reserve();
        }
        out["total"] = d.Total();
        // A sector that cannot be flown leaves no trip figure, and no total to load.
        out["tripFuel"] =
            d.Flyable() ? Json(g_app.aircraft.PlanTripFuel) : Json(std::string(kUnknownFuel));
        out["totalFuel"] = d.Flyable() || !d.CalculateChecked() ? Json(g_app.aircraft.PlanTotalFuel)
                                                                : Json(std::string(kUnknownFuel));
        d.Close(1);
        ctx.Out().Emit(out);
    });
}

void AddAircraft(CLI::App& app, ToolContext& ctx) {
    auto* aircraft = app.add_subcommand("aircraft", "The aircraft and the current one");
    aircraft->require_subcommand(1);
    aircraft->add_subcommand("list", "Every aircraft, the current one marked")->callback([&ctx] {
        ctx.OpenStore();
        StartUp(g_app);
        for (const AircraftRecord& a : ListAircraft()) {
            ctx.Out().Emit({{"registration", Utf16ToUtf8(a.Name)},
                            {"type", Utf16ToUtf8(a.TypeDesignator)},
                            {"current", a.Name == g_app.settings.AircraftReg.view()},
                            {"climbTas", a.ClimbTas},
                            {"climbFuelFlow", a.ClimbFuelFlow},
                            {"cruiseTas", a.CruiseTas},
                            {"cruiseFuelFlow", a.CruiseFuelFlow},
                            {"descentTas", a.DescentTas},
                            {"descentFuelFlow", a.DescentFuelFlow},
                            {"taxiFuel", a.TaxiFuel},
                            {"fuelUnits", FuelUnitsLabel(static_cast<unsigned>(a.FuelUnits))}});
        }
    });
    auto reg = std::make_shared<std::string>();
    auto* use = aircraft->add_subcommand(
        "use", "Makes an aircraft current and recomputes the plan with its airspeeds");
    use->add_option("REG", *reg, "Registration")->required();
    use->callback([&ctx, reg] {
        ctx.OpenStore();
        StartUp(g_app);
        if (!MakeAircraftCurrent(g_app.settings, g_app.aircraft, Utf8ToUtf16(*reg)))
            throw ToolFailure("no aircraft registered \"" + *reg + "\"");
        std::size_t before = ctx.Ui().BoxTexts().size();
        if (!RecomputePlan(g_app.settings, g_app.plan, 1))
            ctx.FailWithLastBox(before, "plan not recomputed");
        SaveSettings(g_app.settings);
        ctx.Out().Emit({{"aircraft", *reg}, {"plan", g_app.settings.ActivePlanName.utf8()}});
    });
}

}  // namespace

void AddPlanningCommands(CLI::App& app, ToolContext& ctx) {
    AddPlan(app, ctx);
    AddFuel(app, ctx);
    AddAircraft(app, ctx);
}

}  // namespace aerix::tools
