// sun, convert, magvar and the flight computer (crosswind, pressure-altitude, density-altitude,
// true-altitude, holding, logbook): the pilot utilities from the command line.
#include <CLI/CLI.hpp>
#include <cmath>
#include <cstdio>

#include "platform/clock.hpp"
#include "tools/tool_context.hpp"
#include "utilities/altimetry.hpp"
#include "utilities/conversions_dialog.hpp"
#include "utilities/crosswind.hpp"
#include "utilities/entry_text.hpp"
#include "utilities/holding.hpp"
#include "utilities/logbook.hpp"
#include "utilities/magnetic_model.hpp"
#include "utilities/sun_times.hpp"

namespace aerix::tools {

namespace {

// Rejects "nan" and "inf", which the range checks would let through.
const CLI::Validator kFinite(
    [](std::string& text) {
        return ParseDecimal(text) ? std::string() : "not a finite number: " + text;
    },
    "NUMBER");

platform::UtcTime ParseDate(const std::string& text) {
    int year = 0;
    int month = 0;
    int day = 0;
    char tail = 0;
    if (text.size() != 10 ||
        std::sscanf(text.c_str(), "%4d-%2d-%2d%c", &year, &month, &day, &tail) != 3 ||
        text[4] != '-' || text[7] != '-')
        throw ToolFailure("invalid date \"" + text + "\": expected YYYY-MM-DD");
    static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    if (year < 1900 || year > 2199 || month < 1 || month > 12 || day < 1 ||
        day > kDays[month - 1] + (month == 2 && leap ? 1 : 0))
        throw ToolFailure("invalid date \"" + text + "\": no such day (years 1900 to 2199)");
    return {year, month, day, 0, 0, 0, 0};
}

double QnhHpa(double value) {
    auto hpa = QnhFromEntry(value);
    if (!hpa)
        throw ToolFailure("QNH must be 800 to 1100 hPa or 23.6 to 32.5 inches of mercury");
    return *hpa;
}

void Require(bool ok, const std::string& error) {
    if (!ok)
        throw ToolFailure(error);
}

void CheckAltitudeArg(double feet, std::string_view what) {
    std::string error;
    Require(CheckAltitude(feet, what, error), error);
}

void CheckTemperatureArg(double celsius) {
    std::string error;
    Require(CheckTemperature(celsius, error), error);
}

CLI::Option* AddLatLon(CLI::App* cmd, double& lat, double& lon) {
    cmd->add_option("LAT", lat, "Latitude (degrees, north positive)")
        ->required()
        ->check(kFinite)
        ->check(CLI::Range(-90.0, 90.0));
    return cmd->add_option("LON", lon, "Longitude (degrees, east positive)")
        ->required()
        ->check(kFinite)
        ->check(CLI::Range(-180.0, 180.0));
}

void AddSun(CLI::App& app, ToolContext& ctx) {
    auto* cmd = app.add_subcommand(
        "sun", "Sunrise and sunset in UTC hours (99.0: never rises, -99.0: never sets)");
    struct Args {
        double lat = 0, lon = 0;
        std::string date;
    };
    auto a = std::make_shared<Args>();
    AddLatLon(cmd, a->lat, a->lon);
    cmd->add_option("DATE", a->date, "UTC date, YYYY-MM-DD")->required();
    cmd->callback([&ctx, a] {
        double rise = 0;
        double set = 0;
        SunTimes(a->lat, a->lon, ParseDate(a->date), rise, set);
        ctx.Out().Emit({{"sunrise", rise}, {"sunset", set}});
    });
}

void AddConvert(CLI::App& app, ToolContext& ctx) {
    auto* cmd = app.add_subcommand(
        "convert",
        "Every field of a kind of quantity after typing VALUE into its FROM field, as "
        "the Conversions dialog shows them");
    struct Args {
        std::string kind, from, value, sg;
    };
    auto a = std::make_shared<Args>();
    static const std::vector<std::string> kKinds = {"volume",   "mass",  "distance", "temperature",
                                                    "pressure", "speed", "fuel"};
    cmd->add_option("KIND", a->kind, "volume, mass, distance, temperature, pressure, speed, fuel")
        ->required()
        ->check(CLI::IsMember(kKinds));
    cmd->add_option("FROM", a->from, "Unit code of the field typed into (ltr, kg, nm, C, mb, ...)")
        ->required();
    cmd->add_option("VALUE", a->value, "The value typed")->required()->check(kFinite);
    cmd->add_option("--sg", a->sg, "Specific gravity of the fuel (default 0.72)")->check(kFinite);
    cmd->callback([&ctx, a] {
        ConversionsDialog dialog;
        auto kind = static_cast<ConversionKind>(std::find(kKinds.begin(), kKinds.end(), a->kind) -
                                                kKinds.begin() + 1);
        dialog.SetKind(kind);
        if (!a->sg.empty()) {
            Require(kind == kKindFuel, "--sg belongs to the fuel kind");
            dialog.Edit(ConversionsDialog::kSg, a->sg);
        }
        Require(a->value.size() <= ConversionsDialog::kReadLength,
                "VALUE: at most 15 characters, as the dialog reads them");

        constexpr ConversionsDialog::Field kValueFields[] = {
            ConversionsDialog::kA, ConversionsDialog::kB, ConversionsDialog::kC,
            ConversionsDialog::kKg, ConversionsDialog::kLb};
        std::string codes;
        std::optional<ConversionsDialog::Field> from;
        for (auto f : kValueFields) {
            if (dialog.UnitCode(f).empty())
                continue;
            codes += (codes.empty() ? "" : ", ") + std::string(dialog.UnitCode(f));
            if (dialog.UnitCode(f) == a->from)
                from = f;
        }
        Require(from.has_value(), "the " + a->kind + " kind has the units " + codes);
        Require(!(kind == kKindFuel && *from == ConversionsDialog::kLb),
                "fuel converts from ltr, usg, img or kg");
        dialog.Edit(*from, a->value);

        Json result = Json::object();
        for (auto f : kValueFields) {
            if (dialog.UnitCode(f).empty())
                continue;
            std::string text = dialog.Text(f);
            if (f == *from) {  // the typed field, in the form the others take
                char buf[400];
                std::snprintf(buf, sizeof buf, "%1.2f", ReadConversionText(a->value).value_or(0));
                text = buf;
            }
            result[std::string(dialog.UnitCode(f))] = text;
        }
        ctx.Out().Emit(result);
    });
}

void AddMagvar(CLI::App& app, ToolContext& ctx) {
    auto* cmd =
        app.add_subcommand("magvar",
                           "Magnetic variation from the World Magnetic Model: declination (east "
                           "positive) and variation (west positive)");
    struct Args {
        double lat = 0, lon = 0, alt = 0;
        std::string date;
    };
    auto a = std::make_shared<Args>();
    AddLatLon(cmd, a->lat, a->lon);
    cmd->add_option("DATE", a->date, "UTC date, YYYY-MM-DD")->required();
    cmd->add_option("--alt", a->alt, "Altitude (feet above mean sea level, default 0)")
        ->check(kFinite)
        ->check(CLI::Range(-2000.0, 200000.0));
    cmd->callback([&ctx, a] {
        auto result = MagneticVariation(a->lat, a->lon, a->alt, ParseDate(a->date));
        Require(result.ok, result.message);
        Json out = {{"declination", result.declination},
                    {"variation", result.variation},
                    {"decimalYear", result.decimalYear},
                    {"outsideValidity", result.outsideValidity}};
        if (result.outsideValidity)
            out["warning"] = result.message;
        ctx.Out().Emit(out);
    });
}

void AddCrosswind(CLI::App& app, ToolContext& ctx) {
    auto* cmd = app.add_subcommand(
        "crosswind",
        "Headwind and crosswind components of a wind on a runway (knots; headwind "
        "negative for a tailwind, crosswind positive from the right)");
    struct Args {
        std::string runway;
        double direction = 0, speed = 0;
    };
    auto a = std::make_shared<Args>();
    cmd->add_option("RUNWAY", a->runway, "Runway 01 to 36 (\"27L\"), or its heading (\"273\")")
        ->required();
    cmd->add_option("WIND_DIR", a->direction, "Wind direction (degrees, from)")
        ->required()
        ->check(kFinite);
    cmd->add_option("WIND_SPEED", a->speed, "Wind speed (kt)")->required()->check(kFinite);
    cmd->callback([&ctx, a] {
        auto heading = RunwayHeading(a->runway);
        Require(heading.has_value(), "runway \"" + a->runway +
                                         "\": a number 01 to 36 (with L, C or R), or its "
                                         "heading 000 to 360");
        std::string error;
        Require(CheckWind(a->direction, a->speed, error), error);
        WindComponents w = RunwayWindComponents(*heading, a->direction, a->speed);
        ctx.Out().Emit({{"runwayHeading", *heading},
                        {"headwind", w.headwind},
                        {"crosswind", w.crosswind},
                        {"crosswindFrom", w.crosswind > 0   ? "right"
                                          : w.crosswind < 0 ? "left"
                                                            : "none"}});
    });
}

void AddAltitudes(CLI::App& app, ToolContext& ctx) {
    auto* pa = app.add_subcommand("pressure-altitude",
                                  "Pressure altitude (ft) of an elevation (ft) under a QNH "
                                  "(hPa, or inches of mercury)");
    auto paArgs = std::make_shared<std::array<double, 2>>();
    pa->add_option("ELEV", (*paArgs)[0], "Elevation (ft)")->required()->check(kFinite);
    pa->add_option("QNH", (*paArgs)[1], "Altimeter setting")->required()->check(kFinite);
    pa->callback([&ctx, paArgs] {
        auto [elevation, qnh] = *paArgs;
        CheckAltitudeArg(elevation, "Elevation");
        double hpa = QnhHpa(qnh);
        ctx.Out().Emit({{"pressureAltitude", PressureAltitude(elevation, hpa)}, {"qnhHpa", hpa}});
    });

    auto* da =
        app.add_subcommand("density-altitude",
                           "Density altitude (ft) from a pressure altitude (ft) and the outside "
                           "air temperature (°C)");
    auto daArgs = std::make_shared<std::array<double, 2>>();
    da->add_option("PRESSURE_ALT", (*daArgs)[0], "Pressure altitude (ft)")
        ->required()
        ->check(kFinite);
    da->add_option("TEMP_C", (*daArgs)[1], "Outside air temperature (°C)")
        ->required()
        ->check(kFinite);
    da->callback([&ctx, daArgs] {
        auto [pressureAlt, temp] = *daArgs;
        CheckAltitudeArg(pressureAlt, "Pressure altitude");
        CheckTemperatureArg(temp);
        double isa = IsaTemperature(pressureAlt);
        ctx.Out().Emit({{"densityAltitude", DensityAltitude(pressureAlt, temp)},
                        {"isaTemperature", isa},
                        {"isaDeviation", temp - isa}});
    });

    auto* ta =
        app.add_subcommand("true-altitude",
                           "True altitude (ft) from the indicated altitude with the altimeter set "
                           "to QNH and the outside air temperature at the aircraft (°C)");
    struct Args {
        double indicated = 0, qnh = 0, temp = 0, station = 0;
    };
    auto taArgs = std::make_shared<Args>();
    ta->add_option("INDICATED", taArgs->indicated, "Indicated altitude (ft)")
        ->required()
        ->check(kFinite);
    ta->add_option("QNH", taArgs->qnh, "Altimeter setting")->required()->check(kFinite);
    ta->add_option("TEMP_C", taArgs->temp, "Outside air temperature at the aircraft (°C)")
        ->required()
        ->check(kFinite);
    ta->add_option("--station-elev", taArgs->station,
                   "Elevation of the station the QNH comes from (ft, default 0)")
        ->check(kFinite);
    ta->callback([&ctx, taArgs] {
        const Args& t = *taArgs;
        CheckAltitudeArg(t.indicated, "Indicated altitude");
        CheckAltitudeArg(t.station, "Station elevation");
        CheckTemperatureArg(t.temp);
        double hpa = QnhHpa(t.qnh);
        ctx.Out().Emit({{"trueAltitude", TrueAltitude(t.indicated, hpa, t.temp, t.station)}});
    });
}

void AddHolding(CLI::App& app, ToolContext& ctx) {
    auto* cmd = app.add_subcommand(
        "holding",
        "Holding pattern entry (direct, teardrop, parallel) for an inbound course and "
        "the heading to the fix, with the outbound course and leg time");
    struct Args {
        double inbound = 0, heading = 0, alt = 0, tas = 0, windDir = 0, windSpeed = 0;
        bool left = false;
    };
    auto a = std::make_shared<Args>();
    cmd->add_option("INBOUND", a->inbound, "Inbound course (degrees)")
        ->required()
        ->check(kFinite)
        ->check(CLI::Range(0.0, 360.0));
    cmd->add_option("HEADING", a->heading, "Heading to the fix (degrees)")
        ->required()
        ->check(kFinite)
        ->check(CLI::Range(0.0, 360.0));
    cmd->add_flag("--left", a->left, "Left-hand pattern (default right turns)");
    cmd->add_option("--alt", a->alt, "Holding altitude (ft; above 14000 the leg is 1.5 min)")
        ->check(kFinite);
    auto* tas = cmd->add_option("--tas", a->tas,
                                "True airspeed (kt), to time the outbound leg "
                                "in the wind")
                    ->check(kFinite)
                    ->check(CLI::Range(1.0, 1000.0));
    auto* dir =
        cmd->add_option("--wind-dir", a->windDir, "Wind direction (degrees, from)")->check(kFinite);
    auto* speed = cmd->add_option("--wind-speed", a->windSpeed, "Wind speed (kt)")->check(kFinite);
    tas->needs(dir, speed);
    dir->needs(tas);
    speed->needs(tas);
    cmd->callback([&ctx, a] {
        std::string error;
        if (a->tas > 0)
            Require(CheckWind(a->windDir, a->windSpeed, error), error);
        auto plan =
            PlanHolding(a->inbound, a->heading, a->left, a->alt, a->tas, a->windDir, a->windSpeed);
        Require(plan.has_value(), "the wind is too strong for this airspeed to hold");
        std::string entry(HoldingEntryName(plan->entry));
        Json out = {{"entry", entry},
                    {"turns", a->left ? "left" : "right"},
                    {"outboundCourse", plan->outboundCourse}};
        if (plan->entry == HoldingEntry::kTeardrop)
            out["teardropHeading"] = plan->teardropHeading;
        out["outboundSeconds"] = plan->outboundSeconds;
        out["outboundTime"] = FormatMinutesSeconds(plan->outboundSeconds);
        ctx.Out().Emit(out);
    });
}

void AddLogbook(CLI::App& app, ToolContext& ctx) {
    auto* cmd = app.add_subcommand("logbook", "The total of flight times given as HH:MM");
    auto times = std::make_shared<std::vector<std::string>>();
    cmd->add_option("TIMES", *times, "Flight times, HH:MM")->required();
    cmd->callback([&ctx, times] {
        std::int64_t total = 0;
        for (const auto& t : *times) {
            std::string error;
            auto minutes = ParseLogbookTime(t, error);
            Require(minutes.has_value(), error);
            total += *minutes;
        }
        ctx.Out().Emit({{"total", FormatLogbookTime(total)},
                        {"minutes", total},
                        {"hours", static_cast<double>(total) / 60.0},
                        {"entries", times->size()}});
    });
}

}  // namespace

void AddUtilitiesCommands(CLI::App& app, ToolContext& ctx) {
    AddSun(app, ctx);
    AddConvert(app, ctx);
    AddMagvar(app, ctx);
    AddCrosswind(app, ctx);
    AddAltitudes(app, ctx);
    AddHolding(app, ctx);
    AddLogbook(app, ctx);
}

}  // namespace aerix::tools
