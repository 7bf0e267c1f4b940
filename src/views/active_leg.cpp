// Waypoint sequencing: the active sector moves on once its end point falls behind, and the data
// bar shows the waypoint being flown.
#include "views/active_leg.hpp"

#include <cmath>
#include <cstdlib>

#include "gps/fix_publication.hpp"
#include "gps/nav_math.hpp"
#include "views/data_bar.hpp"
#include "views/map_view.hpp"
#include "views/plan_sectors.hpp"

namespace aerix {

namespace {

std::u16string EndName(const SectorRecord& s) {
    // The ident is short enough for the bar; a user waypoint may have only a name.
    return s.Text404.empty() ? s.Text402 : s.Text404;
}

// Waypoints are stored in whole CentiMinutes; a plan's ends and a database waypoint agree to
// that, give or take the truncation of a typed position.
bool SamePlace(std::int32_t lat1, std::int32_t lon1, std::int32_t lat2, std::int32_t lon2) {
    return std::abs(lat1 - lat2) <= 1 && std::abs(lon1 - lon2) <= 1;
}

DataBarInfo BarTo(std::u16string name, double lat, double lon, double fromLat, double fromLon,
                  double course) {
    DataBarInfo bar;
    bar.valid = true;
    bar.name = std::move(name);
    bar.latitude = lat;
    bar.longitude = lon;
    CourseDistance(fromLat, fromLon, lat, lon, bar.bearing, bar.distance, 0);
    bar.relativeAngle = AngleOff(bar.bearing, course, &bar.ahead);
    return bar;
}

// Ends a direct-to whose waypoint has been reached: the plan goes on from there.
void EndDirectTo(const std::vector<SectorRecord>& sectors, LegState& leg) {
    leg.ActiveSectorIndex = SectorAfterDirectTo(sectors, leg.DirectToTargetLatitude,
                                                leg.DirectToTargetLongitude, leg.ActiveSectorIndex);
    leg.DirectToStartLatitude.store(0);
    leg.LegChange.store(1);
}

}  // namespace

double AngleOff(double a, double b, bool* ahead) {
    double d = std::fabs(b - a);
    bool front = true;
    if (d > 180)
        d = 360 - d;
    if (d > 90) {
        d = 180 - d;
        front = false;
    }
    if (ahead != nullptr)
        *ahead = front;
    bool negative = (a < b && b - a < 180) || (a > b && a - b > 180);
    return negative ? -d : d;
}

std::uint32_t SectorAfterDirectTo(const std::vector<SectorRecord>& sectors, std::int32_t latitude,
                                  std::int32_t longitude, std::uint32_t active) {
    const auto count = static_cast<std::uint32_t>(sectors.size());
    std::uint32_t starting = count;
    for (std::uint32_t i = 0; i < count; ++i) {
        const SectorRecord& s = sectors[i];
        if (!SamePlace(s.StartLatitude, s.StartLongitude, latitude, longitude))
            continue;
        if (starting == count || (starting < active && i >= active))
            starting = i;
    }
    if (starting < count)
        return starting;
    for (std::uint32_t i = 0; i < count; ++i) {
        const SectorRecord& s = sectors[i];
        if (SamePlace(s.EndLatitude, s.EndLongitude, latitude, longitude))
            return i + 1 < count ? i + 1 : i;
    }
    return active;
}

ActiveLeg SequenceActiveLeg(const std::vector<SectorRecord>& sectors, const GpsState& gps,
                            LegState& legState, DataBarInfo& dataBar) {
    const double lat = gps.Fix.latitude;
    const double lon = gps.Fix.longitude;
    const auto count = static_cast<std::uint32_t>(sectors.size());
    ActiveLeg leg;
    // Before the first fix the position is no position at all (0, 0 until a feed publishes), and
    // a feed started again still shows the last fix of the one before: a paint then must not skip
    // the legs the aircraft has not flown yet.
    const bool anyFix = gps.Fix.positionKnown;
    const bool haveFix = anyFix && FixSinceFeedStart(gps);

    if (legState.DirectToStartLatitude.load() != 0) {
        const double course = double(legState.DirectToCourse.load());
        DataBarInfo bar = BarTo(legState.DirectToName, legState.DirectToTargetLatitude,
                                legState.DirectToTargetLongitude, lat, lon, course);
        if (haveFix && !bar.ahead) {
            EndDirectTo(sectors, legState);
        } else {
            leg.valid = true;
            leg.direct = true;
            leg.bar = bar;
            leg.startLatitude = legState.DirectToStartLatitude.load();
            leg.startLongitude = legState.DirectToStartLongitude.load();
            leg.endLatitude = legState.DirectToTargetLatitude;
            leg.endLongitude = legState.DirectToTargetLongitude;
            leg.course = course;
        }
    }

    if (!leg.direct && legState.ActiveSectorIndex < count) {
        const SectorRecord* s = &sectors[legState.ActiveSectorIndex];
        DataBarInfo bar =
            BarTo(EndName(*s), s->EndLatitude, s->EndLongitude, lat, lon, s->TrueCourse);
        while (haveFix && !bar.ahead && legState.ActiveSectorIndex < count - 1) {
            // On to the next sector, measured from the same position.
            ++legState.ActiveSectorIndex;
            legState.LegChange.store(1);
            s = &sectors[legState.ActiveSectorIndex];
            bar = BarTo(EndName(*s), s->EndLatitude, s->EndLongitude, lat, lon, s->TrueCourse);
        }
        leg.valid = true;
        leg.bar = bar;
        leg.startLatitude = s->StartLatitude;
        leg.startLongitude = s->StartLongitude;
        leg.endLatitude = s->EndLatitude;
        leg.endLongitude = s->EndLongitude;
        leg.course = s->TrueCourse;
    }

    // The model is asked at the aircraft, or before a fix at the start of the leg.
    const SectorRecord* active =
        legState.ActiveSectorIndex < count ? &sectors[legState.ActiveSectorIndex] : nullptr;
    const double refLat = anyFix ? lat : leg.startLatitude;
    const double refLon = anyFix ? lon : leg.startLongitude;
    leg.reference = ChooseDirectionReference(gps.Fix, anyFix, refLat, refLon,
                                             active ? &active->Variation : nullptr);
    leg.bar.reference = leg.reference;
    leg.bar.haveFix = anyFix;
    dataBar = leg.bar;
    return leg;
}

void UpdateActiveLeg(platform::Canvas& view, const ViewInputs& in,
                     const std::vector<SectorRecord>& sectors) {
    SequenceActiveLeg(sectors, in.gps, in.leg, in.view.DataBar);
    DrawDataBar(view, in.view.DataBar, kMapDataBar);
}

}  // namespace aerix
