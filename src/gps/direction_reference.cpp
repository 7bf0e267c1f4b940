#include "gps/direction_reference.hpp"

#include <cmath>
#include <cstdio>

#include "platform/numeric.hpp"
#include "platform/services.hpp"
#include "utilities/magnetic_model.hpp"

namespace aerix {

double DirectionReference::Shown(double trueDegrees) const {
    double d = std::fmod(trueDegrees + (Magnetic() ? variation : 0.0), 360.0);
    return d < 0 ? d + 360.0 : d;
}

const char* DirectionReference::Suffix() const {
    return Magnetic() ? "\xC2\xB0M" : "\xC2\xB0T";
}

DirectionReference ChooseDirectionReference(const GpsFix& fix, bool haveFix, double latitude,
                                            double longitude, const double* sectorVariation) {
    DirectionReference r;
    if (haveFix && fix.variationKnown) {
        r.source = VariationSource::kReceiver;
        r.variation = fix.magneticVariation;
        return r;
    }
    if (auto* clock = platform::Sys().clock) {
        auto model = MagneticVariation(latitude / 6000.0, longitude / 6000.0, 0.0, clock->UtcNow());
        if (model.ok && std::isfinite(model.variation)) {
            r.source = VariationSource::kModel;
            r.variation = model.variation;
            return r;
        }
    }
    if (sectorVariation != nullptr && std::isfinite(*sectorVariation)) {
        r.source = VariationSource::kSector;
        r.variation = *sectorVariation;
    }
    return r;
}

std::string DirectionText(double trueDegrees, const DirectionReference& reference, bool valid) {
    if (!valid)
        return std::string("---") + reference.Suffix();
    int d = TruncInt32(std::lround(reference.Shown(trueDegrees))) % 360;
    char text[16];
    // North reads 360 on an instrument.
    std::snprintf(text, sizeof text, "%03d%s", d == 0 ? 360 : d, reference.Suffix());
    return text;
}

}  // namespace aerix
