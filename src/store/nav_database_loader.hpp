// Loads the waypoints of the active navigation database (g_app.settings.NavDatabaseName) that lie in the
// area bounds into g_app.nav.NavDatabase, for the displays and the waypoint search in flight.
#pragma once

namespace aerix {

// On an open failure says so twice ("Could not open Nav database", then "Could not open nav
// database. Error:") and leaves the previous array, its count and the mounted volume as they are.
void LoadNavDatabase();

}  // namespace aerix
