// The sector dialog model behind "New sector", "Insert a sector" and "Edit a Sector": the two
// ends (found in the navigation database or typed as coordinates), altitude, flight phase, still
// air and magnetic variation. OK writes the sector and recomputes the route. Also the other
// sector commands: delete, direct-to and "Resume plan".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "gps/gps_fix.hpp"
#include "gps/leg_state.hpp"
#include "planning/plan_state.hpp"
#include "planning/waypoint_search.hpp"
#include "settings/settings_state.hpp"
#include "store/nav_data_state.hpp"
#include "store/records.hpp"

namespace aerix {

class SectorDialog {
  public:
    enum class Mode { kNew, kInsert, kEdit };

    // The plan and aircraft are the ones settings names; OK keeps plan's sector count and, when
    // it added a sector, has nav reload its arrays.
    // A sector appended to the active plan; it starts where the last one ends.
    static SectorDialog ForNew(const SettingsState& settings, PlanState& plan, NavDataState& nav);
    // A sector inserted after the sector at index after (0 = first); it starts where that ends.
    static SectorDialog ForInsert(const SettingsState& settings, PlanState& plan, NavDataState& nav,
                                  std::uint32_t after);
    // The sector at index; nothing when the plan has no such sector.
    static std::optional<SectorDialog> ForEdit(const SettingsState& settings, PlanState& plan,
                                               NavDataState& nav, std::uint32_t index);

    Mode GetMode() const { return mode_; }
    // Only the plan's first sector chooses its start; the others start where the one before
    // ends.
    bool StartEditable() const { return startEditable_; }
    const std::optional<SectorEnd>& Start() const { return start_; }
    const std::optional<SectorEnd>& End() const { return end_; }
    void SetStart(const SectorEnd& start);
    void SetEnd(const SectorEnd& end);

    const std::string& AltitudeText() const { return altitude_; }
    void SetAltitude(std::string_view feet) { altitude_ = feet; }
    // 1 climb, 2 cruise, 3 descent.
    int Phase() const { return phase_; }
    void SetPhase(int phase) { phase_ = phase; }
    // Still air: the sector is flown with no wind ("000/00") whatever the wind table says.
    bool StillAir() const { return stillAir_; }
    void SetStillAir(bool on) { stillAir_ = on; }
    // Degrees, west positive. Filled from the magnetic model at the sector's middle whenever an
    // end changes, until the pilot types a figure of their own.
    const std::string& VariationText() const { return variation_; }
    void SetVariation(std::string_view degrees);

    // Writes the sector and recomputes the route (RecomputePlanRoute(0)); returns 1. A missing
    // end, or an altitude, phase or variation that is not a figure, is reported and the dialog
    // stays open (0).
    int Ok();

  private:
    SectorDialog(const SettingsState& settings, PlanState& plan, NavDataState& nav)
        : settings_(settings), plan_(plan), nav_(nav) {}
    void FillVariation();

    const SettingsState& settings_;
    PlanState& plan_;
    NavDataState& nav_;
    Mode mode_ = Mode::kNew;
    std::uint32_t index_ = 0;  // the sector edited, or the one inserted after
    std::uint32_t oid_ = 0;
    SectorRecord original_;
    bool startEditable_ = true;
    std::optional<SectorEnd> start_, end_;
    std::string altitude_;
    int phase_ = 2;
    bool stillAir_ = false;
    std::string variation_;
    bool variationTyped_ = false;
};

// Deletes the sector at index of the active plan: the route is recomputed (so the next sector
// starts where the one before ends) and the sectors after it move up. False when there is none.
bool DeletePlanSector(const SettingsState& settings, PlanState& plan, std::uint32_t index);

// Direct to a waypoint from the present position (fix): the leg starts here (whole CentiMinutes) on
// the rhumb-line course to it (whole degrees), the waypoint becomes the one every readout is to,
// and the leg being flown ends. Refused, with kDirectToNoFixText, before the first fix.
inline constexpr const char* kDirectToNoFixText =
    "No GPS position yet: a direct-to starts at the present position";
bool DirectTo(LegState& leg, const GpsFix& fix, const SectorEnd& waypoint);
// "Resume plan": back to the plan's legs.
void ResumePlan(LegState& leg);

}  // namespace aerix
