// Choosing the active navigation database, and deleting one that is not active, through the
// file dialog over the "*.CDB" volume files.
#pragma once

namespace aerix {

// 0 when a database was chosen, -1 when the user cancelled.
int ChooseNavDatabase();
void DeleteNavDatabase();

}  // namespace aerix
