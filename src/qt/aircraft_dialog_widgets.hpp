// The aircraft dialogs' widgets ("Fuel plan"), registered with the dialog host.
#pragma once

#include "qt/qt_dialog_host.hpp"

namespace aerix::qt {

void RegisterAircraftDialogs(QtDialogHost& host);

}  // namespace aerix::qt
