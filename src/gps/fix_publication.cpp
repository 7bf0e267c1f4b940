#include "gps/fix_publication.hpp"

#include "app/state/app_state.hpp"

namespace aerix {

void TakeFixSnapshot() {
    g_app.Fix = g_app.PublishedFix.Snapshot();
}

void MarkFeedStart() {
    g_app.FeedStartSequence = g_app.PublishedFix.Sequence();
}

bool FixSinceFeedStart() {
    return g_app.PublishedFix.Sequence() > g_app.FeedStartSequence;
}

void AcknowledgeVoidFix() {
    g_app.PublishedFix.ClearVoid();
    g_app.Fix.FixVoid = 0;
}

}  // namespace aerix
