// The GPS device chosen beyond the COM names (a device path, "gpsd", "tcp:HOST:PORT") does not fit
// the 12-character "CommPort" value; it is kept in a value of its own, "CommDevice", beside it.
#pragma once

#include "gps/gps_state.hpp"

namespace aerix {

// gps.PortDevice from "CommDevice" (left empty when the value is missing or unreadable).
void LoadPortDevice(GpsState& gps);
// gps.PortDevice to "CommDevice"; an empty one removes the choice. False when it cannot be saved.
bool SavePortDevice(const GpsState& gps);

}  // namespace aerix
