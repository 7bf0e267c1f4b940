// Waypoint sequencing: the active sector moves on once its end point falls behind, and the data
// bar shows the waypoint being flown.
#include "views/active_leg.hpp"

#include <cmath>

#include "app/state/app_state.hpp"
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

ActiveLeg SequenceActiveLeg(const std::vector<SectorRecord>& sectors, double lat, double lon) {
    const auto count = static_cast<std::uint32_t>(sectors.size());
    ActiveLeg leg;
    DataBarInfo& bar = leg.bar;
    const SectorRecord* active = nullptr;
    // Before the first fix the position is no position at all (0, 0 until a feed publishes), and
    // a feed started again still shows the last fix of the one before: a paint then must not skip
    // the legs the aircraft has not flown yet.
    const bool haveFix = FixSinceFeedStart();
    for (std::uint32_t i = 0; i < count; ++i) {
        const SectorRecord& s = sectors[i];
        double course = 0.0;
        double distance = 0.0;
        CourseDistance(lat, lon, s.EndLatitude, s.EndLongitude, course, distance, 0);
        if (i != g_app.ActiveSectorIndex)
            continue;
        bool ahead = true;
        double angle = AngleOff(course, s.TrueCourse, &ahead);
        if (haveFix && !ahead && g_app.ActiveSectorIndex < count - 1) {
            // The next sector is looked at in this same pass.
            ++g_app.ActiveSectorIndex;
            g_app.LegChange.store(1);
        }
        bar = {true,  EndName(s), double(s.EndLatitude), double(s.EndLongitude), course, distance,
               angle, ahead};
        active = &s;
    }
    if (active != nullptr) {
        leg.valid = true;
        leg.startLatitude = active->StartLatitude;
        leg.startLongitude = active->StartLongitude;
        leg.endLatitude = active->EndLatitude;
        leg.endLongitude = active->EndLongitude;
        leg.course = active->TrueCourse;
    }
    // A direct-to leg flies to the active waypoint from where it was chosen.
    if (g_app.DirectToStartLatitude.load() != 0 && active != nullptr) {
        double course = 0.0;
        double distance = 0.0;
        CourseDistance(lat, lon, active->EndLatitude, active->EndLongitude, course, distance, 0);
        bool ahead = true;
        double angle = AngleOff(course, double(g_app.DirectToCourse.load()), &ahead);
        bar = {true,
               EndName(*active),
               double(active->EndLatitude),
               double(active->EndLongitude),
               course,
               distance,
               angle,
               ahead};
        leg.startLatitude = g_app.DirectToStartLatitude.load();
        leg.startLongitude = g_app.DirectToStartLongitude.load();
        leg.course = double(g_app.DirectToCourse.load());
    }
    g_app.DataBar = bar;
    return leg;
}

void UpdateActiveLeg(platform::Canvas& view) {
    std::vector<SectorRecord> sectors = ReadPlanSectors();
    SequenceActiveLeg(sectors, g_app.Fix.latitude, g_app.Fix.longitude);
    DrawDataBar(view, g_app.DataBar, kMapDataBar);
}

}  // namespace aerix
