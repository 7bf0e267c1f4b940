#include "qt/subsystem_dialogs.hpp"

#include "qt/plan_dialog_widgets.hpp"

namespace aerix::qt {

// Each subsystem's widgets add their Register calls here as they are built; a dialog not
// registered leaves its command doing nothing.
void RegisterSubsystemDialogs(QtDialogHost& host) {
    RegisterPlanDialogs(host);
}

}  // namespace aerix::qt
