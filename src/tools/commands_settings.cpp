// settings: every persisted setting after the first-run defaults and the load, by registry name.
#include <CLI/CLI.hpp>

#include "app/app_state.hpp"
#include "app/start_up.hpp"
#include "settings/settings.hpp"
#include "tools/tool_context.hpp"

namespace aerix::tools {

void AddSettingsCommands(CLI::App& app, ToolContext& ctx) {
    auto* cmd = app.add_subcommand("settings", "The settings as the program loads them at start");
    cmd->callback([&ctx] {
        ctx.OpenPlatform();
        LoadStartSettings(g_app);
        const SettingsState& s = g_app.settings;
        ctx.Out().Emit({
            {"AcReg", s.AircraftReg.utf8()},
            {"CuDbase", s.NavDatabaseName.utf8()},
            {"CuPlanName", s.ActivePlanName.utf8()},
            {"CurrentPlan", s.CurrentPlanId},
            {"CommPort", s.PortName.utf8()},
            {"BaudRate", s.BaudRate},
            {"shlinmap", s.ShowLatLonMap},
            {"shlinhsi", s.ShowLatLonHsi},
            {"shsinmap", s.ShowScaleMap},
            {"shsinhsi", s.ShowScaleHsi},
            {"EnableHotKeys", s.EnableHotKeys},
            {"showAirspace", s.ShowAirspace},
            {"recordGPSdata", s.RecordGpsData},
            {"overwriteGPSdata", s.OverwriteGpsData},
            {"showTrkPointer", s.ShowTrackPointer},
            {"FuelCalc", s.FuelCalc},
            {"IcaoSearch", s.IcaoSearch},
        });
    });
}

}  // namespace aerix::tools
