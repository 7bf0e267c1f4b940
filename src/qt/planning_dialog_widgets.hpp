// The Edit menu's dialog widgets (the sector dialogs and the wind table), registered with the
// dialog host.
#pragma once

#include "qt/qt_dialog_host.hpp"

namespace aerix::qt {

void RegisterPlanningDialogs(QtDialogHost& host);

}  // namespace aerix::qt
