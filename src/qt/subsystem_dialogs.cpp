#include "qt/subsystem_dialogs.hpp"

#include "qt/aircraft_dialog_widgets.hpp"
#include "qt/database_dialog_widgets.hpp"
#include "qt/gps_dialog_widgets.hpp"
#include "qt/map_dialog_widgets.hpp"
#include "qt/plan_dialog_widgets.hpp"
#include "qt/planning_dialog_widgets.hpp"
#include "qt/utility_dialog_widgets.hpp"

namespace aerix::qt {

// Each subsystem's widgets add their Register calls here as they are built; a dialog not
// registered leaves its command doing nothing.
void RegisterSubsystemDialogs(QtDialogHost& host) {
    RegisterPlanDialogs(host);
    RegisterPlanningDialogs(host);
    RegisterAircraftDialogs(host);
    RegisterGpsDialogs(host);
    RegisterMapDialogs(host);
    RegisterUtilityDialogs(host);
    RegisterDatabaseDialogs(host);
}

}  // namespace aerix::qt
