// The navigation database a fresh install starts with: "World", the world's large and medium
// airports from the public-domain OurAirports list shipped in resources/airports/.
#pragma once

#include <cstddef>

namespace aerix {

inline constexpr char16_t kDefaultNavDatabaseName[] = u"World";

// Builds "\My Documents\Aerix\World.CDB" holding the database "World" when that volume file does
// not exist (and the airport list does). The volume is built under a temporary name and renamed
// when complete, so an interrupted build is started again next time. Returns the waypoints
// written.
std::size_t CreateDefaultNavDatabase();

}  // namespace aerix
