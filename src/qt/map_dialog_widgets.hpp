// The chart dialogs' widgets ("Load bitmap (to calibrate)", "Calibrate", "Calibrated maps"),
// registered with the dialog host.
#pragma once

#include "qt/qt_dialog_host.hpp"

namespace aerix::qt {

void RegisterMapDialogs(QtDialogHost& host);

}  // namespace aerix::qt
