#include "gps/fix_publication.hpp"

#include "app/state/app_state.hpp"

namespace aerix {

void TakeFixSnapshot() {
    g_app.gps.Fix = g_app.gps.PublishedFix.Snapshot();
}

void MarkFeedStart() {
    g_app.gps.FeedStartSequence = g_app.gps.PublishedFix.Sequence();
}

bool FixSinceFeedStart() {
    return g_app.gps.PublishedFix.Sequence() > g_app.gps.FeedStartSequence;
}

void AcknowledgeVoidFix() {
    g_app.gps.PublishedFix.ClearVoid();
    g_app.gps.Fix.FixVoid = 0;
}

}  // namespace aerix
