// Waypoints from today's files into a navigation database: SeeYou .cup files and OurAirports'
// airports.csv and navaids.csv. Each kind of place maps to a waypoint type code (property 105):
//
//   SeeYou style                                   type
//   2 grass airfield, 4 gliding, 5 solid airfield  1 Airfield
//   9 VOR                                          3 VOR
//   10 NDB                                         4 NDB
//   17 intersection                                5 Intersection
//   19 control or reporting point                  7 Reporting pt
//   0, 1, 3 outlanding and landmarks (6-8, 11-16,  6 User def wpt (an outlanding field is not
//   18, 20, 21), unknown styles                      an aerodrome)
//
//   OurAirports airports.csv type                  navaids.csv type
//   large/medium/small_airport  1 Airfield         VOR                    3 VOR
//   heliport                    8 Heliport         VOR-DME, VORTAC, DME,  2 VOR/DME
//   seaplane_base               9 Seaport          TACAN
//   balloonport                 6 User def wpt     NDB, NDB-DME           4 NDB
//   closed                      not imported
//
// The free properties are filled as records.hpp describes. A line that cannot be read is
// reported with its number and skipped; the rest is imported.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/nav_data_state.hpp"
#include "store/records.hpp"

namespace aerix {

enum class WaypointFormat { kUnknown, kCup, kAirports, kNavaids };

struct WaypointProblem {
    int line = 0;
    std::string message;
};

struct WaypointParse {
    WaypointFormat format = WaypointFormat::kUnknown;
    std::vector<WaypointRecord> records;
    std::vector<WaypointProblem> problems;
    int ignored = 0;  // lines left out on purpose (closed airports)
};

// Reads a whole file's text. The format comes from the header line; a file without one is read
// as SeeYou when its name ends in ".cup". Text that is not UTF-8 is taken as Latin-1.
WaypointParse ParseWaypointFile(std::string_view text, std::string_view fileName);

// "5130.500N" / "00012.000W" to CentiMinutes; false when the text is not such a coordinate.
bool ParseCupCoordinate(std::string_view text, bool latitude, std::int32_t* centiMinutes);

struct WaypointImportResult {
    bool ok = false;  // false when the database could not be opened or a write failed
    std::size_t added = 0;
    std::size_t duplicates = 0;  // identical to a record already there, or earlier in the input
};

// Adds records to the database `databaseName` in its volume "<name>.CDB", creating both when
// missing. Records identical in all 19 properties to one already there are not added again.
WaypointImportResult ImportWaypoints(NavDataState& nav, std::u16string_view databaseName,
                                     std::span<const WaypointRecord> records);
// The same into the nav volume mounted now (nav.NavVolumeGuid, see NavVolumeScope).
WaypointImportResult ImportWaypointsIntoMountedVolume(const NavDataState& nav,
                                                      std::u16string_view databaseName,
                                                      std::span<const WaypointRecord> records);

}  // namespace aerix
