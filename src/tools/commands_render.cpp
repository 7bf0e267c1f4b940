// render map: the MAP view drawn headless, exactly as the window paints it, into a PNG.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>

#include "app/default_data.hpp"
#include "app/main_window.hpp"
#include "app/state/app_state.hpp"
#include "app/state/settings.hpp"
#include "gps/fix_publication.hpp"
#include "gps/position_text.hpp"
#include "planning/plan_dialogs.hpp"
#include "planning/sector_computation.hpp"
#include "qt/graphics/headless.hpp"
#include "tools/tool_context.hpp"
#include "views/chart_generator.hpp"

namespace aerix::tools {

namespace {

constexpr double kCentiMinutesPerDegree = 6000.0;

struct MapArgs {
    double latitude = 0.0, longitude = 0.0, track = 0.0, speed = 0.0, zoom = 1.0;
    std::string plan, out;
};

void OpenPlanNamed(const std::string& name) {
    OpenPlanDialog d;
    d.Open();
    const auto& entries = d.Entries();
    auto it = std::find(entries.begin(), entries.end(), Utf8ToUtf16(name));
    if (it == entries.end())
        throw ToolFailure("no plan named \"" + name + "\"");
    d.Choose(static_cast<int>(it - entries.begin()));
    AfterPlanOpened();
}

void RenderMap(ToolContext& ctx, const MapArgs& a) {
    ctx.OpenPlatform();
    CreateDefaultSettings();
    LoadSettings();
    CreateDefaultData();
    InstallPlanningHooks();
    RefreshPlanSectorCount();
    // After the platform: it installs a fresh set of services.
    qt::HeadlessGraphics headless;
    GenerateMissingCharts(DefaultMaps());
    if (!a.plan.empty())
        OpenPlanNamed(a.plan);  // for this picture only: the settings keep the active plan

    g_app.ViewMode = kViewMap;
    g_app.MapZoom = a.zoom;
    GpsFix fix;
    fix.latitude = a.latitude * kCentiMinutesPerDegree;
    fix.longitude = a.longitude * kCentiMinutesPerDegree;
    fix.trueTrack = fix.magneticTrack = std::fmod(a.track, 360.0);
    fix.groundSpeed = a.speed;
    g_app.PublishedFix.Publish(fix);
    TakeFixSnapshot();
    FormatPosition();

    platform::Bitmap frame(240, 320);
    {
        auto canvas = headless.Graphics().CanvasOn(frame);
        PaintMapFrame(*canvas);
    }
    if (!headless.Graphics().SaveImage(a.out, frame))
        throw ToolFailure("could not write " + a.out);
    ctx.Out().Emit({{"out", a.out},
                    {"width", frame.Width()},
                    {"height", frame.Height()},
                    {"map", g_app.MapLoaded ? g_app.CurrentMapPath.utf8() : std::string()},
                    {"position", g_app.Fix.positionText.utf8()}});
}

}  // namespace

void AddRenderCommands(CLI::App& app, ToolContext& ctx) {
    auto* render = app.add_subcommand("render", "Draws a view headless, as the window shows it");
    render->require_subcommand(1);
    auto a = std::make_shared<MapArgs>();
    auto* map = render->add_subcommand("map", "The MAP view at a position as a 240 x 320 PNG");
    map->add_option("--lat", a->latitude, "Latitude in degrees, north positive")
        ->required()
        ->check(CLI::Range(-90.0, 90.0));
    map->add_option("--lon", a->longitude, "Longitude in degrees, east positive")
        ->required()
        ->check(CLI::Range(-180.0, 180.0));
    map->add_option("--track", a->track, "True track in degrees")->check(CLI::Range(0.0, 360.0));
    map->add_option("--speed", a->speed, "Ground speed in knots")->check(CLI::Range(0.0, 2000.0));
    map->add_option("--zoom", a->zoom, "Zoom: 0.25, 0.5, 1, 2 or 4")
        ->check(CLI::IsMember({0.25, 0.5, 1.0, 2.0, 4.0}));
    map->add_option("--plan", a->plan, "The plan whose route is drawn (default: the active one)");
    map->add_option("--out", a->out, "The PNG file to write")->required();
    map->callback([&ctx, a] { RenderMap(ctx, *a); });
}

}  // namespace aerix::tools
