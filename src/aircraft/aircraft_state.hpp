// The current aircraft, the fuel figures other flows take from it and the fuel plan's result, and
// the loading last confirmed for weight and balance.
#pragma once

#include <cstdint>

#include "aircraft/loading.hpp"
#include "store/records.hpp"

namespace aerix {

struct AircraftState {
    AircraftRecord CurrentAircraft;  // the aircraft named by the AcReg setting, read at start
    // Taxi fuel and fuel-units code (1 lb, 2 kg, 3 ltr, 4 Imp gal, 5 US gal) of the current
    // aircraft, set whenever it is loaded.
    double TaxiFuel = 0.0;
    std::uint32_t FuelUnits = 0;
    // Left by the fuel plan: climb + cruise + descent fuel of the plan, and the total last shown.
    double PlanTripFuel = 0.0;
    std::uint32_t PlanTotalFuel = 0;
    // The loading last confirmed in the loading dialog; the result dialog works it out.
    AircraftLoading WbLoading;
};

}  // namespace aerix
