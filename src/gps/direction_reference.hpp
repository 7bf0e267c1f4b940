// One magnetic reference for every direction the views show: track, desired track, bearing and
// the course pointer all turn true into magnetic with the same variation, and every figure says
// which reference it is in.
#pragma once

#include <string>

#include "gps/gps_fix.hpp"

namespace aerix {

enum class VariationSource { kNone, kReceiver, kModel, kSector };

struct DirectionReference {
    VariationSource source = VariationSource::kNone;
    double variation = 0.0;  // degrees, west positive: magnetic = true + variation

    bool Magnetic() const { return source != VariationSource::kNone; }
    // A true direction in this reference, 0 to 360.
    double Shown(double trueDegrees) const;
    // "°M" or "°T".
    const char* Suffix() const;
};

// The variation the receiver sent, else the magnetic model's at the position (CentiMinutes) and
// today's date, else the active sector's (sectorVariation, when there is a sector); with none of
// them directions are shown true.
DirectionReference ChooseDirectionReference(const GpsFix& fix, bool haveFix, double latitude,
                                            double longitude, const double* sectorVariation);

// "244°M": three digits, north as 360, and the reference; "---°M" when not valid.
std::string DirectionText(double trueDegrees, const DirectionReference& reference, bool valid);

}  // namespace aerix
