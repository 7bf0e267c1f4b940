// The navigation database management widgets (Tools > Database: Add, Edit, List view, New),
// registered with the dialog host.
#pragma once

#include "qt/qt_dialog_host.hpp"

namespace aerix::qt {

void RegisterDatabaseDialogs(QtDialogHost& host);

}  // namespace aerix::qt
