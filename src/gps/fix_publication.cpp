#include "gps/fix_publication.hpp"

#include "app/state/app_state.hpp"

namespace aerix {

void TakeFixSnapshot() {
    g_app.Fix = g_app.PublishedFix.Snapshot();
}

void AcknowledgeVoidFix() {
    g_app.PublishedFix.ClearVoid();
    g_app.Fix.FixVoid = 0;
}

}  // namespace aerix
