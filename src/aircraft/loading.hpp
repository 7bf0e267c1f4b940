// What the pilot loaded into the current aircraft: kept in AircraftState from the loading dialog
// to the result dialog (and offered again the next time the same aircraft is loaded).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace aerix {

// One loading station with what it carries, in the aircraft's weight units.
struct StationLoad {
    std::u16string Name;
    std::int16_t Kind = 0;  // 1 basic aircraft, 2 fuel, 3 seat row, 4 baggage
    double Arm = 0.0;
    double Weight = 0.0;
    double FuelQuantity = 0.0;  // fuel rows: what was entered, in the aircraft's fuel units
};

struct AircraftLoading {
    std::u16string Aircraft;         // registration; empty until a loading was confirmed
    std::vector<StationLoad> Loads;  // every station of the aircraft, fuel rows as weights
    double FuelQuantity = 0.0;       // fuel entered, in the aircraft's fuel units
};

}  // namespace aerix
