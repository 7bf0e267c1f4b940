// The aircraft dialogs' widgets ("Fuel plan", "Setup A/c", the weight-and-balance pair),
// registered with the dialog host.
#pragma once

#include "qt/qt_dialog_host.hpp"

namespace aerix::qt {

void RegisterAircraftDialogs(QtDialogHost& host);
// Parts of the above, each in its own file.
void RegisterAircraftSetupDialogs(QtDialogHost& host);
void RegisterWeightBalanceDialogs(QtDialogHost& host);

}  // namespace aerix::qt
