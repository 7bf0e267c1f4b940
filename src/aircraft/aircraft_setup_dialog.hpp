// "Setup A/c": the aircraft list (add, edit, delete, make active) and the aircraft form it opens,
// with every figure of the aircraft record, its loading stations and its envelope points.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "aircraft/aircraft_state.hpp"
#include "planning/plan_state.hpp"
#include "platform/prop_val.hpp"
#include "settings/settings_state.hpp"
#include "store/records.hpp"

namespace aerix {

class AircraftEditDialog {
  public:
    static constexpr std::string_view kTitle = "Aircraft";

    // The figures of the form, in the order shown.
    enum Field {
        kRegistration,
        kType,
        kClimbRate,
        kClimbTas,
        kClimbFuelFlow,
        kCruiseTas,
        kCruiseFuelFlow,
        kDescentRate,
        kDescentTas,
        kDescentFuelFlow,
        kTaxiFuel,
        kEmptyWeight,
        kEmptyArm,
        kMaxTakeoffWeight,
        kMaxRampWeight,
        kMaxLandingWeight,
        kMaxZeroFuelWeight,
        kGraphArmMin,
        kGraphArmMax,
        kGraphWeightMin,
        kGraphWeightMax,
        kFieldCount
    };

    struct StationRow {
        std::string Name;
        std::int16_t Kind = 3;  // 1 basic, 2 fuel, 3 seat row, 4 baggage
        std::string Arm;        // the basic row shows the empty-weight arm instead
    };
    struct PointRow {
        std::string Arm;
        std::string Weight;
    };

    // A new aircraft: lb, US gal, inches, a basic "APS" row and a "FUEL" row, no envelope.
    static AircraftEditDialog ForAdd();
    // The stored aircraft with its stations and points (the closing point not shown). Nothing
    // when it cannot be read.
    static std::optional<AircraftEditDialog> ForEdit(platform::CeOid oid);

    const std::string& Text(Field f) const { return fields_[f]; }
    void SetText(Field f, std::string_view text) { fields_[f] = text; }
    // The field's label with its units, which follow the unit choices ("Taxi fuel (US gal)").
    std::string Label(Field f) const;

    std::int16_t WeightUnits() const { return weightUnits_; }
    std::int16_t FuelUnits() const { return fuelUnits_; }
    std::int16_t ArmUnits() const { return armUnits_; }
    void SetWeightUnits(std::int16_t code) { weightUnits_ = code; }
    void SetFuelUnits(std::int16_t code) { fuelUnits_ = code; }
    void SetArmUnits(std::int16_t code) { armUnits_ = code; }

    const std::vector<StationRow>& Stations() const { return stations_; }
    // A new seat row after the others.
    void AddStation();
    // False (and says so) for the basic row.
    bool RemoveStation(std::size_t index);
    void SetStationName(std::size_t index, std::string_view name);
    // The basic row's kind stays 1 and no other row may become basic.
    void SetStationKind(std::size_t index, std::int16_t kind);
    void SetStationArm(std::size_t index, std::string_view arm);
    // The arm shown for a row: the basic row's is the empty-weight arm.
    std::string StationArmText(std::size_t index) const;

    const std::vector<PointRow>& Points() const { return points_; }
    // A new point after index (at the end for an index past the last), copying its neighbour.
    void InsertPoint(std::size_t after);
    void RemovePoint(std::size_t index);
    void SetPointArm(std::size_t index, std::string_view arm);
    void SetPointWeight(std::size_t index, std::string_view weight);

    platform::CeOid RecordId() const { return oid_; }
    const std::u16string& OriginalName() const { return originalName_; }

    // OK: checks every figure, station and point (the first fault is reported and nothing is
    // written: false), then writes the aircraft, its stations and its closed envelope. A renamed
    // aircraft takes its stations and points along, and the current-aircraft setting
    // (settings.AircraftReg) with it.
    bool Ok(SettingsState& settings);
    // The registration written by the last successful Ok().
    const std::u16string& SavedName() const { return savedName_; }

  private:
    std::optional<AircraftRecord> Check(std::vector<StationRecord>& stations,
                                        std::vector<EnvelopePointRecord>& points) const;

    std::array<std::string, kFieldCount> fields_;
    std::int16_t weightUnits_ = 1, fuelUnits_ = 5, armUnits_ = 1;
    std::vector<StationRow> stations_;
    std::vector<PointRow> points_;
    AircraftRecord original_;  // reserved properties are carried through unchanged
    std::u16string originalName_;
    std::u16string savedName_;
    platform::CeOid oid_ = 0;
};

class AircraftSetupDialog {
  public:
    static constexpr std::string_view kTitle = "Setup A/c";

    // The current aircraft is the one settings names; making one current recomputes plan.
    AircraftSetupDialog(SettingsState& settings, AircraftState& aircraft, PlanState& plan)
        : settings_(settings), aircraft_(aircraft), plan_(plan) {}

    void Open();
    // Refills the list: registration and type, the current aircraft marked "*".
    void Refresh();
    const std::vector<std::string>& Lines() const { return lines_; }
    const std::vector<std::u16string>& Registrations() const { return names_; }
    void Select(int index) { selected_ = index; }
    int Selected() const { return selected_; }

    AircraftEditDialog BeginAdd() const { return AircraftEditDialog::ForAdd(); }
    std::optional<AircraftEditDialog> BeginEdit() const;
    // Ends the form: on OK (1) saves it; when saved, the aircraft saved is offered as the active
    // one (or, being active already, reloaded and the plan recomputed). The list is refilled and
    // the saved aircraft selected.
    bool Finish(AircraftEditDialog& edit, int result);
    // "Use": asks "make active a/c?" for the selected aircraft; on Yes makes it current and
    // recomputes the plan with its airspeeds.
    bool Choose();
    // Delete: refused for the current aircraft; otherwise asks, then deletes the aircraft with its
    // stations and envelope points.
    bool Delete();
    int Close(int code);

  private:
    bool OfferActive(const std::u16string& registration);

    SettingsState& settings_;
    AircraftState& aircraft_;
    PlanState& plan_;
    std::vector<std::string> lines_;
    std::vector<std::u16string> names_;
    std::vector<platform::CeOid> oids_;
    int selected_ = -1;
};

}  // namespace aerix
