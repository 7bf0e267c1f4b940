// The user manual Help opens (kManualPage), put in place from the program's
// resources on the first start (a copy the pilot edited or replaced is left alone).
#pragma once

namespace aerix {

// Copies resources/Manual.htm into the data root when the page is missing; false when it could
// not (the page stays missing and Help falls back to the resource itself).
bool InstallManual();

}  // namespace aerix
