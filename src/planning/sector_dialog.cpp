#include "planning/sector_dialog.hpp"

#include <cmath>
#include <cstdio>
#include <vector>

#include "gps/nav_math.hpp"
#include "planning/sector_computation.hpp"
#include "platform/message_box.hpp"
#include "platform/numeric.hpp"
#include "platform/services.hpp"
#include "platform/text.hpp"
#include "store/record_store.hpp"
#include "utilities/entry_text.hpp"
#include "utilities/magnetic_model.hpp"

namespace aerix {

namespace {

struct StoredSector {
    CeOid oid = 0;
    SectorRecord record;
};

std::vector<StoredSector> ReadAll(DbHandle& h) {
    std::vector<StoredSector> all;
    ReadEach(h, ReadSector, [&](SectorRecord r, platform::CeOid oid) {
        all.push_back({oid, std::move(r)});
    });
    return all;
}

std::vector<StoredSector> ReadActivePlan(const SettingsState& settings) {
    DbHandle h = OpenDatabase(settings.ActivePlanName.view(), schema::kSecNumber);
    return h ? ReadAll(h) : std::vector<StoredSector>{};
}

SectorEnd StartOf(const SectorRecord& s) {
    return {s.Text401, s.Text403, s.StartLatitude, s.StartLongitude};
}

SectorEnd EndOf(const SectorRecord& s) {
    return {s.Text402, s.Text404, s.EndLatitude, s.EndLongitude};
}

std::string FormatVariation(double degrees) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.1f", degrees);
    return buf;
}

// The current aircraft's true airspeed for a phase; 0 without one.
std::int16_t AircraftTas(const SettingsState& settings, int phase) {
    DbHandle h = OpenDatabase(schema::kAircraftName, schema::kAcName);
    AircraftRecord a;
    platform::PropVal key =
        platform::PropVal::Text(600, std::u16string(settings.AircraftReg.view()));
    if (!h || h.SeekValue(key) == 0 || ReadAircraft(h, kFromCurrent, 0, a) == 0)
        return 0;
    return phase == 1 ? a.ClimbTas : phase == 2 ? a.CruiseTas : a.DescentTas;
}

// Renumbers the sectors 1, 2, 3 ... in their order; false when a write failed.
bool Renumber(const SettingsState& settings) {
    DbHandle h = OpenDatabase(settings.ActivePlanName.view(), schema::kSecNumber);
    if (!h)
        return false;
    auto all = ReadAll(h);
    for (std::size_t i = 0; i < all.size(); ++i) {
        auto number = static_cast<std::int16_t>(i + 1);
        if (all[i].record.SectorNumber != number) {
            all[i].record.SectorNumber = number;
            if (WriteSector(h, all[i].record, all[i].oid) == 0)
                return false;
        }
    }
    return true;
}

}  // namespace

SectorDialog SectorDialog::ForNew(const SettingsState& settings, PlanState& plan,
                                  NavDataState& nav) {
    SectorDialog d(settings, plan, nav);
    d.mode_ = Mode::kNew;
    auto all = ReadActivePlan(settings);
    d.index_ = static_cast<std::uint32_t>(all.size());
    if (!all.empty()) {
        const SectorRecord& last = all.back().record;
        d.start_ = EndOf(last);
        d.startEditable_ = false;
        d.altitude_ = Utf16ToUtf8(last.AltitudeText);
        d.phase_ = last.Phase;
    }
    return d;
}

SectorDialog SectorDialog::ForInsert(const SettingsState& settings, PlanState& plan,
                                     NavDataState& nav, std::uint32_t after) {
    auto all = ReadActivePlan(settings);
    if (after >= all.size())
        return ForNew(settings, plan, nav);
    SectorDialog d(settings, plan, nav);
    d.mode_ = Mode::kInsert;
    d.index_ = after;
    const SectorRecord& before = all[after].record;
    d.start_ = EndOf(before);
    d.startEditable_ = false;
    d.altitude_ = Utf16ToUtf8(before.AltitudeText);
    d.phase_ = before.Phase;
    return d;
}

std::optional<SectorDialog> SectorDialog::ForEdit(const SettingsState& settings, PlanState& plan,
                                                  NavDataState& nav, std::uint32_t index) {
    auto all = ReadActivePlan(settings);
    if (index >= all.size())
        return std::nullopt;
    SectorDialog d(settings, plan, nav);
    d.mode_ = Mode::kEdit;
    d.index_ = index;
    d.oid_ = all[index].oid;
    d.original_ = all[index].record;
    d.start_ = StartOf(d.original_);
    d.end_ = EndOf(d.original_);
    d.startEditable_ = index == 0;
    d.altitude_ = Utf16ToUtf8(d.original_.AltitudeText);
    d.phase_ = d.original_.Phase;
    d.stillAir_ = d.original_.WindText == u"000/00";
    d.variation_ = FormatVariation(d.original_.Variation);
    d.variationTyped_ = true;  // the sector's own figure stands until an end changes
    return d;
}

void SectorDialog::SetStart(const SectorEnd& start) {
    if (!startEditable_)
        return;
    start_ = start;
    variationTyped_ = false;
    FillVariation();
}

void SectorDialog::SetEnd(const SectorEnd& end) {
    end_ = end;
    variationTyped_ = false;
    FillVariation();
}

void SectorDialog::SetVariation(std::string_view degrees) {
    variation_ = degrees;
    variationTyped_ = true;
}

void SectorDialog::FillVariation() {
    if (variationTyped_ || !start_ || !end_)
        return;
    double lat = (start_->latitude + static_cast<double>(end_->latitude)) / 2.0 / 6000.0;
    double lon1 = start_->longitude / 6000.0;
    double lon2 = end_->longitude / 6000.0;
    // The middle of a leg across the 180th meridian lies on the short side.
    if (std::fabs(lon2 - lon1) > 180.0)
        lon2 += lon2 < lon1 ? 360.0 : -360.0;
    double lon = (lon1 + lon2) / 2.0;
    if (lon > 180.0)
        lon -= 360.0;
    if (lon < -180.0)
        lon += 360.0;
    auto feet = ParseDecimal(altitude_);
    auto result = MagneticVariation(lat, lon, feet ? *feet : 0.0, platform::Sys().clock->UtcNow());
    if (result.ok)
        variation_ = FormatVariation(result.variation);
}

int SectorDialog::Ok() {
    if (!start_) {
        platform::ShowError("Choose where the sector starts");
        return 0;
    }
    if (!end_) {
        platform::ShowError("Choose where the sector ends");
        return 0;
    }
    auto feet = ParseWholeNumber(altitude_);
    if (!feet || *feet < -2000 || *feet > 99999) {
        platform::ShowError("Altitude (ft): enter a whole number of feet from -2000 to 99999");
        return 0;
    }
    if (phase_ < 1 || phase_ > 3) {
        platform::ShowError("Choose climb, cruise or descent");
        return 0;
    }
    auto variation = variation_.empty() ? std::optional<double>(0.0) : ParseDecimal(variation_);
    if (!variation || std::fabs(*variation) > 180.0) {
        platform::ShowError("Variation: enter degrees from -180 to 180, west positive");
        return 0;
    }

    SectorRecord s = mode_ == Mode::kEdit ? original_ : SectorRecord{};
    s.Text401 = start_->name;
    s.Text403 = start_->ident;
    s.StartLatitude = start_->latitude;
    s.StartLongitude = start_->longitude;
    s.Text402 = end_->name;
    s.Text404 = end_->ident;
    s.EndLatitude = end_->latitude;
    s.EndLongitude = end_->longitude;
    s.AltitudeText = Utf8ToUtf16(std::to_string(*feet));
    if (mode_ != Mode::kEdit || s.Phase != phase_ || s.TrueAirspeed == 0)
        s.TrueAirspeed = AircraftTas(settings_, phase_);
    s.Phase = static_cast<std::int16_t>(phase_);
    s.Variation = *variation;
    // Anything but the still-air text takes the wind table's wind at the next recomputation.
    if (stillAir_)
        s.WindText = u"000/00";
    else if (s.WindText == u"000/00")
        s.WindText.clear();

    // The sector, the ones moved to make room for it and the route recomputed after it are one
    // change: a plan left halfway would number 1, 2, 4 or have a leg that starts nowhere.
    RecordTransaction tx;
    if (!tx.Open())
        return 0;
    {
        DbHandle h = OpenDatabase(settings_.ActivePlanName.view(), schema::kSecNumber);
        if (!h)
            return 0;
        auto all = ReadAll(h);
        if (mode_ == Mode::kEdit) {
            if (WriteSector(h, s, oid_) == 0)
                return 0;
        } else {
            std::uint32_t position =
                mode_ == Mode::kInsert ? index_ + 1 : static_cast<std::uint32_t>(all.size());
            // Make room: the sectors after the new one move down one number, last first.
            for (std::size_t i = all.size(); i-- > position;) {
                all[i].record.SectorNumber = static_cast<std::int16_t>(i + 2);
                if (WriteSector(h, all[i].record, all[i].oid) == 0)
                    return 0;
            }
            s.SectorNumber = static_cast<std::int16_t>(position + 1);
            if (WriteSector(h, s, 0) == 0)
                return 0;
        }
    }
    RefreshPlanSectorCount(settings_, plan_);
    bool kept = RecomputePlanRoute(settings_, plan_, 0) && tx.Commit();
    RefreshPlanSectorCount(settings_, plan_);
    if (!kept)
        return 0;
    if (mode_ != Mode::kEdit)
        nav_.ArraysPending = 1;
    return 1;
}

bool DeletePlanSector(const SettingsState& settings, PlanState& plan, std::uint32_t index) {
    // The delete decides whether to recompute from the loaded count, so it must be current.
    RefreshPlanSectorCount(settings, plan);
    if (index >= plan.PlanSectorCount)
        return false;
    // The delete, the route recomputed after it and the renumbering are one change.
    bool kept = false;
    {
        RecordTransaction tx;
        kept = tx.Open() &&
               DeleteSector(settings, plan.PlanSectorCount, index,
                            [&settings, &plan] { RecomputePlanRoute(settings, plan, 0); }) &&
               Renumber(settings) && tx.Commit();
    }
    std::uint32_t count = RefreshPlanSectorCount(settings, plan);
    if (!kept)
        return false;
    if (plan.HighlightedSector >= count)
        plan.HighlightedSector = count ? count - 1 : 0;
    return true;
}

bool DirectTo(LegState& leg, const GpsFix& fix, const SectorEnd& waypoint) {
    // The leg starts at the present position: without a fix there is none (and a start
    // latitude of 0 would read as no direct-to at all).
    if (!fix.positionKnown) {
        platform::ShowError(kDirectToNoFixText);
        return false;
    }
    std::int32_t lat = TruncInt32(fix.latitude);
    std::int32_t lon = TruncInt32(fix.longitude);
    double course = 0.0;
    double distance = 0.0;
    CourseDistance(lat, lon, waypoint.latitude, waypoint.longitude, course, distance, 0);
    leg.DirectToName = waypoint.ident.empty() ? waypoint.name : waypoint.ident;
    leg.DirectToTargetLatitude = waypoint.latitude;
    leg.DirectToTargetLongitude = waypoint.longitude;
    leg.DirectToStartLongitude.store(lon);
    leg.DirectToCourse.store(TruncInt32(course));
    leg.DirectToStartLatitude.store(lat);
    leg.LegChange.store(1);
    return true;
}

void ResumePlan(LegState& leg) {
    leg.DirectToStartLatitude.store(0);
    leg.LegChange.store(1);
}

}  // namespace aerix
