// Waypoint sequencing in the MAP view: the active sector moves on once its end point falls
// behind, and the data bar shows the waypoint being flown.
#include <cmath>

#include "app/state/app_state.hpp"
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

void UpdateActiveLeg(platform::Canvas& view) {
    const double lat = g_app.Fix.latitude;
    const double lon = g_app.Fix.longitude;
    std::vector<SectorRecord> sectors = ReadPlanSectors();
    const auto count = static_cast<std::uint32_t>(sectors.size());
    DataBarInfo& bar = g_app.DataBar;
    bar = DataBarInfo();
    const SectorRecord* active = nullptr;
    for (std::uint32_t i = 0; i < count; ++i) {
        const SectorRecord& s = sectors[i];
        double course = 0.0;
        double distance = 0.0;
        CourseDistance(lat, lon, s.EndLatitude, s.EndLongitude, course, distance, 0);
        if (i != g_app.ActiveSectorIndex)
            continue;
        bool ahead = true;
        double angle = AngleOff(course, s.TrueCourse, &ahead);
        if (!ahead && g_app.ActiveSectorIndex < count - 1) {
            // The next sector is looked at in this same pass.
            ++g_app.ActiveSectorIndex;
            g_app.LegChange.store(1);
        }
        bar = {true,  EndName(s), double(s.EndLatitude), double(s.EndLongitude), course, distance,
               angle, ahead};
        active = &s;
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
    }
    DrawDataBar(view, bar, kMapDataBar);
}

}  // namespace aerix
