// The navigation database a fresh install starts with: "World", the world's large and medium
// airports from the public-domain OurAirports list shipped in resources/airports/.
#pragma once

#include <cstddef>
#include <string>

namespace aerix {

inline constexpr char16_t kDefaultNavDatabaseName[] = u"World";

struct DefaultNavBuild {
    std::size_t added = 0;  // waypoints written; 0 when the volume was there and whole
    std::string problem;    // why the build failed; empty when it did not
    bool diskFull = false;  // the build failed for want of room
};

// Builds "\My Documents\Aerix\World.CDB" holding the database "World" when that volume file does
// not exist or is damaged (a damaged one is kept beside it as World.CDB.N), and the airport list
// exists. The volume is built under a temporary name, sealed (no log beside it) and checked, then
// renamed into place, so an interrupted build leaves nothing a later start takes for done.
DefaultNavBuild CreateDefaultNavDatabase();

}  // namespace aerix
