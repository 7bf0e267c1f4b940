// nmea, gps, simulate: the fix feeds from the command line.
#include <CLI/CLI.hpp>
#include <atomic>
#include <csignal>
#include <fstream>
#include <iostream>
#include <stop_token>

#include "app/app_state.hpp"
#include "app/plan_legs.hpp"
#include "app/start_up.hpp"
#include "gps/feeds.hpp"
#include "gps/gps_port.hpp"
#include "gps/nav_math.hpp"
#include "gps/playback.hpp"
#include "gps/simulator.hpp"
#include "platform/clock.hpp"
#include "platform/text.hpp"
#include "settings/settings.hpp"
#include "tools/tool_context.hpp"

namespace aerix::tools {

namespace {

std::atomic<bool> g_interrupted{false};

extern "C" void OnInterrupt(int) {
    g_interrupted.store(true);
}

Json FixJson(const GpsFix& fix) {
    return Json{{"latitude", fix.latitude},
                {"longitude", fix.longitude},
                {"groundSpeed", fix.groundSpeed},
                {"trueTrack", fix.trueTrack},
                {"magneticVariation", fix.magneticVariation},
                {"magneticTrack", fix.magneticTrack},
                {"void", fix.FixVoid != 0},
                {"position", fix.positionText.utf8()}};
}

void AddNmea(CLI::App& app, ToolContext& ctx) {
    auto* cmd = app.add_subcommand(
        "nmea",
        "Runs a recorded NMEA log through the playback's line handling and parser (no "
        "pauses); one fix per RMC line parsed");
    auto file = std::make_shared<std::string>("-");
    cmd->add_option("FILE", *file, "Log file, or - for standard input");
    cmd->callback([&ctx, file] {
        std::ifstream opened;
        std::istream* in = &std::cin;
        if (*file != "-") {
            opened.open(*file, std::ios::binary);
            if (!opened)
                throw ToolFailure("cannot open " + *file);
            in = &opened;
        }
        GpsFix fix;
        PlayNmeaStream(*in, fix, g_app.gps.InstrumentDrawingRunning,
                       [&](std::string_view, bool parsed) {
                           if (parsed)
                               ctx.Out().Emit(FixJson(fix));
                           return true;
                       });
        if (in->bad())
            throw ToolFailure("read error in " + *file);
    });
}

void AddGps(CLI::App& app, ToolContext& ctx) {
    auto* cmd = app.add_subcommand(
        "gps", "A live receiver on the console: one fix per line until --seconds pass or Ctrl-C");
    struct Args {
        std::string port;
        std::uint32_t baud = 0;
        bool record = false;
        double seconds = 0;
    };
    auto a = std::make_shared<Args>();
    cmd->add_option("--port", a->port,
                    "COM1:..COM9:, NavM, a device path, gpsd or tcp:HOST:PORT (default: setting)");
    cmd->add_option("--baud", a->baud, "Baud rate (default: setting, else 4800)")
        ->check(CLI::IsMember({1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200}));
    cmd->add_flag("--record", a->record, "Append RMC lines to \\My Documents\\GpsData.txt");
    cmd->add_option("--seconds", a->seconds, "Stop after this many seconds (default: run on)")
        ->check(CLI::NonNegativeNumber);
    cmd->callback([&ctx, a] {
        auto& platform = ctx.OpenPlatform();
        g_app.settings.PortName.assign(u"COM1:");
        g_app.settings.BaudRate = 4800;
        if (platform.Registry().KeyExists(kSettingsKey))
            LoadSettings(g_app.settings);
        if (!a->port.empty()) {
            SetConfiguredPortName(g_app.gps, g_app.settings, Utf8ToUtf16(a->port));
        }
        if (a->baud)
            g_app.settings.BaudRate = a->baud;
        g_app.settings.RecordGpsData = a->record ? 1 : 0;
        g_app.settings.OverwriteGpsData = 0;

        std::atomic<bool> disconnected{false};
        FeedWiring feed{g_app.gps,
                        g_app.leg,
                        g_app.settings,
                        [&](FeedCommand) { disconnected.store(true); },
                        {}};
        g_interrupted.store(false);
        auto previous = std::signal(SIGINT, OnInterrupt);
        auto previousTerm = std::signal(SIGTERM, OnInterrupt);

        g_app.settings.GpsSource = kSourceRealtime;
        bool opened = OpenGpsPort(feed) == 0;
        auto& clock = *platform::Sys().clock;
        std::int64_t end = clock.NowMs() + static_cast<std::int64_t>(a->seconds * 1000);
        std::uint64_t seen = g_app.gps.PublishedFix.Sequence();
        while (opened && !disconnected.load() && !g_interrupted.load() &&
               (a->seconds <= 0 || clock.NowMs() < end)) {
            std::uint64_t now = g_app.gps.PublishedFix.WaitNewer(seen, 200);
            if (now != seen) {
                seen = now;
                ctx.Out().Emit(FixJson(g_app.gps.PublishedFix.Snapshot()));
                std::cout.flush();
            }
        }
        DisconnectGps(g_app.gps, g_app.settings);
        std::signal(SIGINT, previous);
        std::signal(SIGTERM, previousTerm);
        if (!opened || disconnected.load())
            throw ToolFailure("GPS port failed: " + (ctx.Ui().BoxTexts().empty()
                                                         ? std::string("unknown error")
                                                         : ctx.Ui().BoxTexts().back()));
    });
}

// Sequences to the next leg once the distance flown reaches the next sector's start, as the
// views do when the aircraft reaches the waypoint.
void SequenceLegs(int legIndex, const SimLegSource& source) {
    SimLeg leg;
    SimLeg next;
    int count = source.sectorCount ? source.sectorCount() : 0;
    if (legIndex >= count - 1 || !source.readLeg(legIndex, &leg) ||
        !source.readLeg(legIndex + 1, &next))
        return;
    double course = 0;
    double distance = 0;
    CourseDistance(leg.startLatitude, leg.startLongitude, next.startLatitude, next.startLongitude,
                   course, distance, 0);
    if (g_app.gps.SimulatedDistance * kRadiansToNauticalMiles >= distance)
        g_app.leg.LegChange.store(1);
}

void AddSimulate(CLI::App& app, ToolContext& ctx) {
    auto* cmd = app.add_subcommand(
        "simulate", "Flies the active plan (or --plan) in virtual time; one fix per step");
    struct Args {
        std::string plan;
        int steps = 0;
    };
    auto a = std::make_shared<Args>();
    cmd->add_option("--plan", a->plan, "Plan to fly (default: the current plan)");
    cmd->add_option("--steps", a->steps, "Number of one-second steps")
        ->required()
        ->check(CLI::PositiveNumber);
    cmd->callback([&ctx, a] {
        ctx.OpenPlatform();
        LoadStartSettings(g_app);
        if (!a->plan.empty())
            g_app.settings.ActivePlanName.assign(Utf8ToUtf16(a->plan));
        platform::VirtualClock clock;
        platform::Services saved = platform::Sys();
        platform::Sys().clock = &clock;
        std::stop_source stop;
        int steps = 0;
        SimLegSource source = PlanLegSource();
        SimulatorThread(stop.get_token(), g_app.gps, g_app.leg, source, [&](int legIndex) {
            ++steps;
            Json line{{"step", steps}, {"leg", legIndex}, {"timeMs", clock.NowMs()}};
            // The fix object must outlive the loop over it.
            const Json fix = FixJson(g_app.gps.PublishedFix.Snapshot());
            for (auto& [key, value] : fix.items())
                line[key] = value;
            ctx.Out().Emit(line);
            if (steps >= a->steps)
                stop.request_stop();
            SequenceLegs(legIndex, source);
        });
        platform::Sys() = saved;
        if (steps == 0)
            throw ToolFailure("plan has no sector to fly");
    });
}

}  // namespace

void AddGpsCommands(CLI::App& app, ToolContext& ctx) {
    AddNmea(app, ctx);
    AddGps(app, ctx);
    AddSimulate(app, ctx);
}

}  // namespace aerix::tools
