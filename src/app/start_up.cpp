#include "app/start_up.hpp"

#include "gps/port_device_setting.hpp"
#include "planning/sector_computation.hpp"
#include "settings/settings.hpp"

namespace aerix {

void LoadStartSettings(AppState& app) {
    app.settings.PortName.assign(u"COM1:");
    CreateDefaultSettings(app.settings);
    LoadSettings(app.settings);
}

DefaultNavBuild StartUp(AppState& app) {
    LoadStartSettings(app);
    LoadPortDevice(app.gps);
    DefaultNavBuild world = CreateDefaultData();
    RefreshPlanSectorCount(app.settings, app.plan);
    return world;
}

}  // namespace aerix
