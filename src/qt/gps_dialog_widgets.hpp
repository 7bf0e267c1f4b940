// The GPS dialogs' widgets ("GPS setup", "GPS data"), registered with the dialog host.
#pragma once

#include "qt/qt_dialog_host.hpp"

namespace aerix::qt {

void RegisterGpsDialogs(QtDialogHost& host);

}  // namespace aerix::qt
