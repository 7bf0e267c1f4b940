// The record kinds the program keeps in its property databases, as plain values. Reading a record
// copies only the properties it carries, so fields it lacks keep what the caller put there.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/text.hpp"

namespace aerix {

// A waypoint of a navigation database (properties 100-118). Positions are whole CentiMinutes
// (degrees x 6000, north and east positive), the unit the area bounds and airspace file share.
// The free properties carry, in every importer and in the Add/Edit dialog:
//   104 elevation in feet            106 frequency text ("118.500" MHz, NDB "338" kHz)
//   107 runway length in metres, 0   108 country or region code (23 characters in memory)
//   109 municipality or description  110 runway designator text ("09/27")
//   111 where the record came from: "cup", "ourairports", "user"
//   112-118 free notes, empty unless the user fills them
// In memory the name keeps 35 characters and the ident 5: importers cut longer texts to fit.
struct WaypointRecord {
    std::u16string Name;                          // 100, the primary sort key
    std::u16string Ident;                         // 101, ICAO code or ident
    std::int32_t Latitude = 0;                    // 102
    std::int32_t Longitude = 0;                   // 103
    double Value104 = 0.0;                        // 104, elevation (ft)
    std::int16_t WaypointType = 0;                // 105: 1 airfield ... 9 seaport
    std::u16string Text106;                       // 106, frequency
    std::int16_t Number107 = 0;                   // 107, runway length (m)
    std::u16string ExtraText;                     // 108, country or region
    std::array<std::u16string, 10> FurtherTexts;  // 109-118 (see above)
};

// Indexes into WaypointRecord::FurtherTexts.
inline constexpr std::size_t kWptMunicipality = 0;  // 109
inline constexpr std::size_t kWptRunway = 1;        // 110
inline constexpr std::size_t kWptSource = 2;        // 111
inline constexpr std::size_t kWptFirstNote = 3;     // 112-118

// Widths the in-memory navigation database keeps (terminator not counted).
inline constexpr std::size_t kWptNameChars = 35;
inline constexpr std::size_t kWptIdentChars = 5;
inline constexpr std::size_t kWptExtraChars = 23;

// A calibrated chart (properties 300-313).
struct MapRecord {
    std::u16string Path;                   // 300, the sort key
    std::array<double, 13> Calibration{};  // 301-313, in order
};

// One sector (leg) of a flight plan (properties 400-419). Positions are CentiMinutes.
struct SectorRecord {
    std::int16_t SectorNumber = 0;                      // 400, 1 for the first sector
    std::u16string Text401, Text402, Text403, Text404;  // waypoint texts of the sector
    double TrueCourse = 0.0;                            // 405
    double Distance = 0.0;                              // 406, nm
    double Time = 0.0;                                  // 407, minutes
    std::int16_t TrueAirspeed = 0;                      // 408, kt
    std::int16_t GroundSpeed = 0;                       // 409, kt
    double Variation = 0.0;                             // 410, west positive
    double MagneticHeading = 0.0;                       // 411
    std::u16string WindText;                            // 412, "%03d/%02d"
    double Fuel = 0.0;                                  // 413
    std::int32_t StartLatitude = 0;                     // 414
    std::int32_t StartLongitude = 0;                    // 415
    std::int32_t EndLatitude = 0;                       // 416
    std::int32_t EndLongitude = 0;                      // 417
    std::int16_t Phase = 0;                             // 418: 1 climb, 2 cruise, 3 descent
    std::u16string AltitudeText;                        // 419, feet as decimal text
};

// One row of a wind table (properties 500-503).
struct WindRecord {
    std::int32_t Altitude = 0;     // 500, feet, the sort key
    std::int16_t Direction = 0;    // 501, degrees
    std::int16_t Speed = 0;        // 502, kt
    std::int16_t Temperature = 0;  // 503, degrees
};

// An aircraft with its performance and weight data (properties 600-628).
struct AircraftRecord {
    std::u16string Name;                 // 600, registration, the sort key
    double ClimbRate = 0.0;              // 601
    double ClimbFuelFlow = 0.0;          // 602
    std::int16_t ClimbTas = 0;           // 603
    double CruiseFuelFlow = 0.0;         // 604
    std::int16_t CruiseTas = 0;          // 605
    double DescentRate = 0.0;            // 606
    double DescentFuelFlow = 0.0;        // 607
    std::int16_t DescentTas = 0;         // 608
    std::int32_t MaxTakeoffWeight = 0;   // 609
    std::int32_t EmptyWeight = 0;        // 610
    double EmptyArm = 0.0;               // 611
    std::int32_t MaxZeroFuelWeight = 0;  // 612
    std::int32_t MaxLandingWeight = 0;   // 613
    double Spare614 = 0.0;               // 614
    double Spare615 = 0.0;               // 615
    std::int16_t ArmUnits = 0;           // 616
    std::u16string TypeDesignator;       // 617
    std::int32_t MaxRampWeight = 0;      // 618
    double Spare619 = 0.0;               // 619
    double Spare620 = 0.0;               // 620
    double TaxiFuel = 0.0;               // 621
    std::int16_t WeightUnits = 0;        // 622
    std::int16_t FuelUnits = 0;          // 623
    double GraphArmMax = 0.0;            // 624
    double GraphArmMin = 0.0;            // 625
    double GraphWeightMax = 0.0;         // 626
    double GraphWeightMin = 0.0;         // 627
    bool Flag628 = false;                // 628
};

// A loading station of an aircraft (properties 700-704).
struct StationRecord {
    std::u16string AircraftName;   // 700
    std::u16string StationName;    // 701
    std::int16_t StationKind = 0;  // 702: 1 basic aircraft, 2 fuel, 3 seat row, 4 baggage
    double Arm = 0.0;              // 703
    std::int32_t Weight = 0;       // 704
};

// A corner of an aircraft's centre-of-gravity envelope (properties 800-803).
struct EnvelopePointRecord {
    std::int16_t PointNumber = 0;  // 800, 1, 2, 3 ... the sort key
    std::u16string AircraftName;   // 801
    double Arm = 0.0;              // 802
    std::int32_t Weight = 0;       // 803
};

}  // namespace aerix
