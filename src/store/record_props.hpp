// Each record kind to and from its property array: written with every property, in the kind's
// fixed order; read by full property id, ignoring ids the kind does not know.
#pragma once

#include <span>
#include <vector>

#include "platform/prop_val.hpp"
#include "store/records.hpp"

namespace aerix {

std::vector<platform::PropVal> ToProps(const WaypointRecord& r);
std::vector<platform::PropVal> ToProps(const MapRecord& r);
std::vector<platform::PropVal> ToProps(const SectorRecord& r);
std::vector<platform::PropVal> ToProps(const WindRecord& r);
std::vector<platform::PropVal> ToProps(const AircraftRecord& r);
std::vector<platform::PropVal> ToProps(const StationRecord& r);
std::vector<platform::PropVal> ToProps(const EnvelopePointRecord& r);

void FromProps(std::span<const platform::PropVal> props, WaypointRecord& r);
void FromProps(std::span<const platform::PropVal> props, MapRecord& r);
void FromProps(std::span<const platform::PropVal> props, SectorRecord& r);
void FromProps(std::span<const platform::PropVal> props, WindRecord& r);
void FromProps(std::span<const platform::PropVal> props, AircraftRecord& r);
void FromProps(std::span<const platform::PropVal> props, StationRecord& r);
void FromProps(std::span<const platform::PropVal> props, EnvelopePointRecord& r);

}  // namespace aerix
