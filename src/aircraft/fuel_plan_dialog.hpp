// The "Fuel plan" dialog model: the plan's fuel summed by flight phase plus taxi fuel, then either
// the fuel to load (trip + contingency + holding) or, with the fuel in the tanks entered, what
// remains as reserve. Leaves PlanTripFuel and PlanTotalFuel in AircraftState; SettingsState's
// FuelCalc is the mode.
#pragma once

#include <string>
#include <string_view>

#include "aircraft/aircraft_state.hpp"
#include "settings/settings_state.hpp"

namespace aerix {

class FuelPlanDialog {
  public:
    static constexpr std::string_view kTitle = "Fuel plan";

    // The plan settings names, flown by the aircraft whose figures aircraft holds.
    FuelPlanDialog(SettingsState& settings, AircraftState& aircraft)
        : settings_(settings), aircraft_(aircraft) {}

    // Sets the title and units label, sums the current plan's sectors and shows the mode that
    // settings.FuelCalc names.
    void Open();
    // The radio buttons.
    void ChooseCalculate();
    void ChooseLoaded();
    // Typing into the entries; text that is not an unsigned whole number reads as 0.
    void SetHolding(std::string_view text);
    void SetContingency(std::string_view text);
    void SetInTanks(std::string_view text);
    // OK or X: gives the navigation bar back its title; returns code.
    int Close(int code);

    const std::string& UnitsLabel() const { return units_; }
    const std::string& Climb() const { return climb_; }
    const std::string& Cruise() const { return cruise_; }
    const std::string& Descent() const { return descent_; }
    const std::string& Taxi() const { return taxi_; }
    const std::string& Total() const { return total_; }
    const std::string& Reserve() const { return reserve_; }
    const std::string& Holding() const { return holding_; }
    const std::string& Contingency() const { return contingency_; }
    const std::string& InTanks() const { return inTanks_; }
    bool CalculateChecked() const { return calculate_; }
    // Holding and "% Contingency" with their labels, or "In tanks", "Reserve:" and the reserve.
    bool CalculateFieldsShown() const { return calculate_; }
    bool LoadedFieldsShown() const { return !calculate_; }
    double TripFuel() const { return trip_; }
    // False when a sector the sums count cannot be flown (its ground speed is 0 kt or less):
    // its phase, the total and the reserve then show dashes instead of a figure.
    bool Flyable() const { return flyable_; }

  private:
    void RecalculateFromHolding();
    void RecalculateFromInTanks();
    // known: the total is a figure; otherwise it shows dashes and PlanTotalFuel is 0.
    void StoreResults(unsigned total, bool known);
    // The trip fuel for PlanTripFuel: not a number when a sector cannot be flown.
    double TripOrNan() const;

    SettingsState& settings_;
    AircraftState& aircraft_;

    std::string units_, climb_, cruise_, descent_, taxi_, total_, reserve_;
    std::string holding_, contingency_, inTanks_;
    bool calculate_ = true;
    double trip_ = 0.0;
    bool flyable_ = true;
};

// What the fuel plan and the flight log show for a fuel figure they cannot give.
inline constexpr std::string_view kUnknownFuel = "---";

// "Fuel units: lb" ... "Fuel units: Usgal" for codes 1 to 5; empty otherwise.
std::string FuelUnitsLabel(unsigned code);
// The unit alone: "lb" ... "Usgal"; empty for an unknown code.
std::string FuelUnitName(unsigned code);

}  // namespace aerix
