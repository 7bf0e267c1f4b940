// The aircraft database ("Aircraft", one AircraftRecord per aircraft, keyed by registration) and
// the current aircraft, the one named by SettingsState::AircraftReg.
//
// What each property of the record holds (units as the default aircraft carry them):
//   600 Name               registration, the sort key
//   601 ClimbRate          ft/min
//   602 ClimbFuelFlow      fuel units per hour in the climb
//   603 ClimbTas           kt, true airspeed in the climb
//   604 CruiseFuelFlow     fuel units per hour in the cruise
//   605 CruiseTas          kt
//   606 DescentRate        ft/min
//   607 DescentFuelFlow    fuel units per hour in the descent
//   608 DescentTas         kt
//   609 MaxTakeoffWeight   weight units
//   610 EmptyWeight        weight units (the "APS" station carries the same figure)
//   611 EmptyArm           arm units (the "APS" station's arm)
//   612 MaxZeroFuelWeight  weight units, 0 when the aircraft has none
//   613 MaxLandingWeight   weight units
//   614, 615, 619, 620     reserved, 0 in every aircraft
//   616 ArmUnits           arm unit code, kArmInches (or a metric code below)
//   617 TypeDesignator     ICAO type, e.g. "C172"
//   618 MaxRampWeight      weight units (take-off weight plus the fuel burnt taxiing)
//   621 TaxiFuel           fuel units
//   622 WeightUnits        weight unit code, kWeightPounds
//   623 FuelUnits          fuel unit code (FuelUnitCode below)
//   624, 625 GraphArmMax, GraphArmMin          arm range of the envelope graph
//   626, 627 GraphWeightMax, GraphWeightMin    weight range of the envelope graph
//   628 Flag628            reserved, false in every aircraft
// These readings agree with the default aircraft: 609 and 613 equal the top of each envelope,
// 618 exceeds 609 by a few pounds of taxi fuel, 624-627 frame each envelope with a margin, and
// 601/606 are the climb and descent rates of the types named in 617.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "aircraft/aircraft_state.hpp"
#include "platform/prop_val.hpp"
#include "settings/settings_state.hpp"
#include "store/records.hpp"

namespace aerix {

// Fuel unit codes (property 623).
enum FuelUnitCode : std::uint32_t {
    kFuelPounds = 1,
    kFuelKilograms = 2,
    kFuelLitres = 3,
    kFuelImperialGallons = 4,
    kFuelUsGallons = 5,
};
// Weight unit codes (property 622), the same numbering as the fuel units for weights.
inline constexpr std::int16_t kWeightPounds = 1;
inline constexpr std::int16_t kWeightKilograms = 2;
// Arm unit codes (property 616): the default aircraft use inches; metric aircraft may give arms in
// millimetres, centimetres or metres.
inline constexpr std::int16_t kArmInches = 1;
inline constexpr std::int16_t kArmMillimetres = 2;
inline constexpr std::int16_t kArmCentimetres = 3;
inline constexpr std::int16_t kArmMetres = 4;

// Copies into state the figures of the aircraft that other flows read: taxi fuel and fuel units.
void ApplyAircraftToState(AircraftState& state, const AircraftRecord& aircraft);

// Reads the aircraft named by settings.AircraftReg into state.CurrentAircraft and applies it.
// False (state unchanged) when the database cannot be opened ("Could not open database") or holds
// no such aircraft.
bool LoadCurrentAircraft(const SettingsState& settings, AircraftState& state);

// Every aircraft in registration order; empty when the database cannot be opened.
std::vector<AircraftRecord> ListAircraft();

// The aircraft with this registration, matched exactly or, failing that, without regard to ASCII
// case; its record id in *oid. False when there is none (quietly).
bool FindAircraft(std::u16string_view registration, AircraftRecord& out,
                  platform::CeOid* oid = nullptr);

// An aircraft's loading stations in kind order (basic, fuel, seats, baggage) with their ids.
struct StoredStation {
    platform::CeOid Oid = 0;
    StationRecord Record;
};
std::vector<StoredStation> ReadStations(std::u16string_view aircraft);

// An aircraft's envelope points in point-number order with their ids.
struct StoredEnvelopePoint {
    platform::CeOid Oid = 0;
    EnvelopePointRecord Record;
};
std::vector<StoredEnvelopePoint> ReadEnvelopePoints(std::u16string_view aircraft);

// Makes the aircraft with this registration the current one (settings.AircraftReg and state).
// False when there is none. The caller recomputes the plan with the new airspeeds
// (RecomputePlan(..., 1)).
bool MakeAircraftCurrent(SettingsState& settings, AircraftState& state,
                         std::u16string_view registration);

}  // namespace aerix
