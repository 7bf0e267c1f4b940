// The painting side of the fix: feeds publish whole fixes to GpsState::PublishedFix, and the
// user-interface thread copies the latest one into GpsState::Fix before it paints, so every view
// draws from one consistent fix.
#pragma once

#include "gps/gps_state.hpp"

namespace aerix {

// gps.Fix = the fix last published.
void TakeFixSnapshot(GpsState& gps);

// A feed starts flying the plan from its first sector: the fix left by the feed before must not
// move the active waypoint on before the new feed's first fix.
void MarkFeedStart(GpsState& gps);
// Whether a fix has been published since the present feed started (or at all, before any).
bool FixSinceFeedStart(const GpsState& gps);

// The instrument view has shown its "INVALID GPS SIGNAL" banner: clears FixVoid in both copies,
// so the banner shows once per void sentence or time-out.
void AcknowledgeVoidFix(GpsState& gps);

}  // namespace aerix
