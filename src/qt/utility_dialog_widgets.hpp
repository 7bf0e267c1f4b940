// The E6b utilities' dialog widgets (timer, conversions, sunrise/sunset and the flight-computer
// dialogs), registered with the dialog host.
#pragma once

#include "qt/qt_dialog_host.hpp"

namespace aerix::qt {

void RegisterUtilityDialogs(QtDialogHost& host);

}  // namespace aerix::qt
