// The dialog widgets of the subsystems (planning, GPS, maps, aircraft, utilities, databases),
// each registered with the dialog host under its identifier.
#pragma once

#include "qt/qt_dialog_host.hpp"

namespace aerix::qt {

void RegisterSubsystemDialogs(QtDialogHost& host);

}  // namespace aerix::qt
