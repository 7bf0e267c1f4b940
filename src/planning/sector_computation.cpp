#include "planning/sector_computation.hpp"

#include <cmath>
#include <cstdio>
#include <utility>
#include <vector>

#include "gps/nav_math.hpp"
#include "planning/wind_table.hpp"
#include "platform/numeric.hpp"
#include "platform/services.hpp"
#include "platform/text.hpp"
#include "platform/text_numbers.hpp"
#include "store/record_store.hpp"

namespace aerix {

namespace {

constexpr std::u16string_view kStillAir = u"000/00";

struct PlanSector {
    platform::CeOid oid = 0;
    SectorRecord record;
};

bool ReadActiveAircraft(const SettingsState& settings, AircraftRecord& aircraft) {
    std::uint32_t count = 0;
    DbHandle h = OpenDatabase(schema::kAircraftName, schema::kAcName, &count);
    if (!h || count == 0)
        return false;
    platform::PropVal key =
        platform::PropVal::Text(600, std::u16string(settings.AircraftReg.view()));
    return h.SeekValue(key) != 0 && ReadAircraft(h, kFromCurrent, 0, aircraft) != 0;
}

// The sectors in sector-number order; false when the plan cannot be opened (already said).
bool ReadPlan(const SettingsState& settings, PlanState& plan, DbHandle& h,
              std::vector<PlanSector>& sectors) {
    std::uint32_t count = 0;
    h = OpenDatabase(settings.ActivePlanName.view(), schema::kSecNumber, &count);
    if (!h)
        return false;
    sectors.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        PlanSector s;
        s.oid = ReadSector(h, kFromCurrent, 0, s.record);
        if (s.oid == 0)
            break;
        sectors.push_back(std::move(s));
    }
    plan.PlanSectorCount = static_cast<std::uint32_t>(sectors.size());
    return true;
}

std::u16string WindText(int direction, int speed) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%03d/%02d", direction, speed);
    return Utf8ToUtf16(buf);
}

void ComputeSector(SectorRecord& s, const AircraftRecord& a, int refreshAirspeeds) {
    int windDirection = 0;
    int windSpeed = 0;
    if (s.WindText != kStillAir) {
        WindAtResult w = WindAt(TextToInt32(Utf16ToUtf8(s.AltitudeText)), false);
        windDirection = w.direction;
        windSpeed = w.speed;
        s.WindText = WindText(windDirection, windSpeed);
    }
    double fuelFlow = 0.0;
    std::int16_t tas = 0;
    if (s.Phase == 1) {
        fuelFlow = a.ClimbFuelFlow;
        tas = a.ClimbTas;
    } else if (s.Phase == 2) {
        fuelFlow = a.CruiseFuelFlow;
        tas = a.CruiseTas;
    } else {
        fuelFlow = a.DescentFuelFlow;
        tas = a.DescentTas;
    }
    if (refreshAirspeeds == 1)
        s.TrueAirspeed = tas;
    else
        tas = s.TrueAirspeed;
    double heading = 0.0;
    double groundSpeed = 0.0;
    WindTriangle(tas, s.TrueCourse, windDirection, windSpeed, heading, groundSpeed);
    s.GroundSpeed = RoundGroundSpeed(groundSpeed);
    // No guard for a ground speed of 0: the time and fuel become infinite.
    s.Time = s.Distance / static_cast<double>(s.GroundSpeed) * 60.0;
    s.MagneticHeading = MagneticHeadingOf(s.Variation, heading);
    s.Fuel = s.Time * fuelFlow * 0.016666666666666666;
}

// Every sector is rewritten, as one change: a plan half recomputed would have legs that start
// away from where the one before ends.
bool Recompute(const SettingsState& settings, PlanState& plan, int refreshAirspeeds, bool route) {
    AircraftRecord aircraft;
    if (!ReadActiveAircraft(settings, aircraft))
        return true;
    RecordTransaction tx;
    DbHandle h;
    std::vector<PlanSector> sectors;
    if (!tx.Open() || !ReadPlan(settings, plan, h, sectors))
        return false;
    for (std::size_t i = 0; i < sectors.size(); ++i) {
        SectorRecord& s = sectors[i].record;
        if (route) {
            if (i > 0) {
                const SectorRecord& before = sectors[i - 1].record;
                s.StartLatitude = before.EndLatitude;
                s.StartLongitude = before.EndLongitude;
                s.Text401 = before.Text402;
                s.Text403 = before.Text404;
            }
            CourseDistance(s.StartLatitude, s.StartLongitude, s.EndLatitude, s.EndLongitude,
                           s.TrueCourse, s.Distance, 0);
        }
        ComputeSector(s, aircraft, refreshAirspeeds);
        if (WriteSector(h, s, sectors[i].oid) == 0)
            return false;
    }
    h.Close();
    return tx.Commit();
}

}  // namespace

std::int16_t RoundGroundSpeed(double groundSpeed) {
    return static_cast<std::int16_t>(TruncInt32(groundSpeed + 0.5));
}

double MagneticHeadingOf(double variation, double trueHeading) {
    double magnetic = std::fmod(variation + trueHeading, 360.0);
    if (magnetic < 0)
        magnetic += 360.0;
    return magnetic;
}

bool RecomputePlan(const SettingsState& settings, PlanState& plan, int refreshAirspeeds) {
    return Recompute(settings, plan, refreshAirspeeds, false);
}

bool RecomputePlanRoute(const SettingsState& settings, PlanState& plan, int refreshAirspeeds) {
    return Recompute(settings, plan, refreshAirspeeds, true);
}

// The renumbering and the route recomputed after it are one change.
bool ReversePlan(const SettingsState& settings, PlanState& plan) {
    RecordTransaction tx;
    DbHandle h;
    std::vector<PlanSector> sectors;
    if (!tx.Open() || !ReadPlan(settings, plan, h, sectors))
        return false;
    auto n = static_cast<std::int16_t>(sectors.size());
    for (std::size_t i = 0; i < sectors.size(); ++i) {
        SectorRecord& s = sectors[i].record;
        std::swap(s.StartLatitude, s.EndLatitude);
        std::swap(s.StartLongitude, s.EndLongitude);
        std::swap(s.Text401, s.Text402);
        std::swap(s.Text403, s.Text404);
        s.SectorNumber = static_cast<std::int16_t>(n - static_cast<std::int16_t>(i));
        if (WriteSector(h, s, sectors[i].oid) == 0)
            return false;
    }
    h.Close();
    return RecomputePlanRoute(settings, plan, 0) && tx.Commit();
}

std::uint32_t RefreshPlanSectorCount(const SettingsState& settings, PlanState& plan) {
    std::uint32_t count = 0;
    if (!settings.ActivePlanName.empty()) {
        auto h = platform::Sys().store->OpenDatabase(
            platform::kObjectStoreVolume, settings.ActivePlanName.view(), schema::kSecNumber, 0);
        if (h)
            count = h.RecordCount();
    }
    plan.PlanSectorCount = count;
    return count;
}

}  // namespace aerix
