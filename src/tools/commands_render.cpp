// render map|hsi|aerix: a view drawn headless, exactly as the window paints it, into a PNG.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <optional>

#include "app/app_state.hpp"
#include "app/default_data.hpp"
#include "app/main_window.hpp"
#include "app/start_up.hpp"
#include "gps/fix_publication.hpp"
#include "gps/position_text.hpp"
#include "planning/plan_dialogs.hpp"
#include "planning/sector_computation.hpp"
#include "platform/services.hpp"
#include "qt/graphics/headless.hpp"
#include "settings/settings.hpp"
#include "store/airspace_loader.hpp"
#include "store/nav_database_loader.hpp"
#include "tools/tool_context.hpp"
#include "views/chart_generator.hpp"
#include "views/instrument_frame.hpp"

namespace aerix::tools {

namespace {

constexpr double kCentiMinutesPerDegree = 6000.0;

struct MapArgs {
    double latitude = 0.0, longitude = 0.0, track = 0.0, speed = 0.0, zoom = 1.0;
    std::optional<double> variation;  // as a receiver would send it; else the magnetic model
    std::uint32_t range = 1;
    std::string plan, out, database;
};

void OpenPlanNamed(const std::string& name) {
    OpenPlanDialog d{g_app.settings, g_app.plan};
    d.Open();
    const auto& entries = d.Entries();
    auto it = std::find(entries.begin(), entries.end(), Utf8ToUtf16(name));
    if (it == entries.end())
        throw ToolFailure("no plan named \"" + name + "\"");
    d.Choose(static_cast<int>(it - entries.begin()));
    AfterPlanOpened(g_app.settings, g_app.plan, g_app.nav);
}

void PublishFix(const MapArgs& a) {
    GpsFix fix;
    fix.latitude = a.latitude * kCentiMinutesPerDegree;
    fix.longitude = a.longitude * kCentiMinutesPerDegree;
    fix.trueTrack = std::fmod(a.track, 360.0);
    fix.magneticVariation = a.variation.value_or(0.0);
    fix.variationKnown = a.variation.has_value();
    fix.positionKnown = true;
    fix.magneticTrack = std::fmod(fix.trueTrack + fix.magneticVariation + 360.0, 360.0);
    fix.groundSpeed = a.speed;
    g_app.gps.PublishedFix.Publish(fix);
    TakeFixSnapshot(g_app.gps);
    FormatPosition(g_app.gps.Fix);
}

void Save(qt::HeadlessGraphics& headless, const platform::Bitmap& frame, const std::string& out) {
    if (!headless.Graphics().SaveImage(out, frame))
        throw ToolFailure("could not write " + out);
}

void RenderMap(ToolContext& ctx, const MapArgs& a) {
    ctx.OpenStore();
    StartUp(g_app);
    // After the platform: it installs a fresh set of services.
    qt::HeadlessGraphics headless;
    GenerateMissingCharts(DefaultMaps());
    if (!a.plan.empty())
        OpenPlanNamed(a.plan);  // for this picture only: the settings keep the active plan

    g_app.settings.ViewMode = kViewMap;
    g_app.view.MapZoom = a.zoom;
    PublishFix(a);

    platform::Bitmap frame(240, 320);
    {
        auto canvas = headless.Graphics().CanvasOn(frame);
        PaintMapFrame(*canvas);
    }
    Save(headless, frame, a.out);
    ctx.Out().Emit(
        {{"out", a.out},
         {"width", frame.Width()},
         {"height", frame.Height()},
         {"map", g_app.view.MapLoaded ? g_app.view.CurrentMapPath.utf8() : std::string()},
         {"position", g_app.gps.Fix.positionText.utf8()}});
}

void RenderInstruments(ToolContext& ctx, const MapArgs& a, bool aerix) {
    ctx.OpenStore();
    StartUp(g_app);
    qt::HeadlessGraphics headless;
    if (!a.plan.empty())
        OpenPlanNamed(a.plan);
    // The arrays, as the loading dialog fills them (no airspace file: no airspace).
    if (std::filesystem::exists(platform::Sys().root->Resolve(kAirspaceFile)))
        LoadAirspace(g_app.nav);
    if (!a.database.empty())
        g_app.settings.NavDatabaseName.assign(Utf8ToUtf16(a.database));
    if (!g_app.settings.NavDatabaseName.empty())
        LoadNavDatabase(g_app.settings, g_app.nav);
    g_app.nav.ArraysPending = 0;

    g_app.settings.ViewMode = kViewInstruments;
    g_app.view.InstrumentAerix = aerix ? 1 : 0;
    g_app.view.InstrumentCentreX = aerix ? 215 : 120;
    g_app.view.InstrumentCentreY = aerix ? 193 : 135;
    g_app.view.InstrumentRangeStep = a.range;
    PublishFix(a);

    InstrumentFrameInput in =
        PrepareInstrumentFrame({g_app.view, g_app.settings, g_app.gps, g_app.leg}, g_app.nav);
    platform::Graphics& graphics = headless.Graphics();
    platform::Bitmap picture = RenderInstrumentFrame(
        in, [&graphics](platform::Bitmap& b) { return graphics.CanvasOn(b); });
    // Placed in the view area as the window shows it.
    platform::Bitmap frame(240, 320);
    {
        auto canvas = graphics.CanvasOn(frame);
        const platform::Rect area{0, 0, kInstrumentViewWidth, kInstrumentViewHeight};
        canvas->StretchBlt(area, picture, area);
    }
    Save(headless, frame, a.out);
    Json result{{"out", a.out},
                {"width", frame.Width()},
                {"height", frame.Height()},
                {"view", aerix ? "aerix" : "hsi"},
                {"range_nm", kRangePerStepNm * a.range},
                {"waypoints_loaded", g_app.nav.NavEntryCount},
                {"airspace_loaded", g_app.nav.AirspaceEntryCount},
                {"position", g_app.gps.Fix.positionText.utf8()}};
    if (in.leg.valid) {
        result["active_waypoint"] = Utf16ToUtf8(in.leg.bar.name);
        result["active_sector"] = g_app.leg.ActiveSectorIndex.load();
        result["bearing_true"] = in.leg.bar.bearing;
        if (in.leg.reference.Magnetic())
            result["bearing_magnetic"] = in.leg.reference.Shown(in.leg.bar.bearing);
        result["distance_nm"] = in.leg.bar.distance;
    }
    ctx.Out().Emit(result);
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

    for (bool aerix : {false, true}) {
        auto b = std::make_shared<MapArgs>();
        auto* view = render->add_subcommand(
            aerix ? "aerix" : "hsi", aerix ? "The AERIX view at a position as a 240 x 320 PNG"
                                           : "The HSI view at a position as a 240 x 320 PNG");
        view->add_option("--lat", b->latitude, "Latitude in degrees, north positive")
            ->required()
            ->check(CLI::Range(-90.0, 90.0));
        view->add_option("--lon", b->longitude, "Longitude in degrees, east positive")
            ->required()
            ->check(CLI::Range(-180.0, 180.0));
        view->add_option("--track", b->track, "True track in degrees")
            ->check(CLI::Range(0.0, 360.0));
        view->add_option("--speed", b->speed, "Ground speed in knots")
            ->check(CLI::Range(0.0, 2000.0));
        view->add_option("--variation", b->variation,
                         "Magnetic variation in degrees, west positive, as a receiver sends it "
                         "(default: the magnetic model's)")
            ->check(CLI::Range(-180.0, 180.0));
        view->add_option("--range", b->range, "Range step: 1, 2, 4, 8 or 16 (5 nm each)")
            ->check(CLI::IsMember({1, 2, 4, 8, 16}));
        view->add_option("--plan", b->plan, "The plan flown (default: the active one)");
        view->add_option("--db", b->database,
                         "Navigation database whose waypoints are drawn (default: the chosen one)");
        view->add_option("--out", b->out, "The PNG file to write")->required();
        view->callback([&ctx, b, aerix] { RenderInstruments(ctx, *b, aerix); });
    }
}

}  // namespace aerix::tools
