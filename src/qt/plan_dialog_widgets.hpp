// The plan dialogs' widgets, registered with the dialog host.
#pragma once

#include "qt/qt_dialog_host.hpp"

namespace aerix::qt {

void RegisterPlanDialogs(QtDialogHost& host);

}  // namespace aerix::qt
