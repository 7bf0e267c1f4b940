// The built-in data set: six aircraft with their loading stations and envelopes, four calibrated
// charts and a four-level wind table, each written only into a database that is created now.
#pragma once

#include <span>

#include "app/default_nav_database.hpp"
#include "store/records.hpp"

namespace aerix {

// Builds the default navigation database "World" when its volume is missing (default_nav_database).
// Makes sure "Aircraft", "Stations", "Envelopes", "Maps" and "WindTable" exist, filling those it
// creates. With "Aircraft" already there, reads the aircraft named by g_app.settings.AircraftReg
// into g_app.aircraft.CurrentAircraft (and its taxi fuel and fuel units into g_app). A failed
// "World" build is told (a full disk in those words) and tried again at the next start; its outcome
// is returned.
DefaultNavBuild CreateDefaultData();

// The default rows, in the order they are written.
std::span<const AircraftRecord> DefaultAircraft();
std::span<const StationRecord> DefaultStations();
std::span<const EnvelopePointRecord> DefaultEnvelopePoints();
std::span<const MapRecord> DefaultMaps();
std::span<const WindRecord> DefaultWinds();

}  // namespace aerix
