#include "gps/fix_publication.hpp"

namespace aerix {

void TakeFixSnapshot(GpsState& gps) {
    gps.Fix = gps.PublishedFix.Snapshot();
}

void MarkFeedStart(GpsState& gps) {
    gps.FeedStartSequence = gps.PublishedFix.Sequence();
}

bool FixSinceFeedStart(const GpsState& gps) {
    return gps.PublishedFix.Sequence() > gps.FeedStartSequence;
}

void AcknowledgeVoidFix(GpsState& gps) {
    gps.PublishedFix.ClearVoid();
    gps.Fix.FixVoid = 0;
}

}  // namespace aerix
