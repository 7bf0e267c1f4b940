// Reading a TopoJSON topology (quantized, delta-encoded arcs) into longitude/latitude rings.
#pragma once

#include <filesystem>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

namespace aerix {

struct LonLat {
    double lon = 0.0, lat = 0.0;
};
using Ring = std::vector<LonLat>;

struct Topology {
    std::vector<Ring> arcs;  // decoded, in degrees
    // The named object's polygons as rings (outer rings and holes alike; fill even-odd).
    std::vector<Ring> Rings(const std::string& object) const;
    // Arcs that two geometries of the object share: the borders between countries.
    std::vector<int> SharedArcs(const std::string& object) const;

    std::shared_ptr<const nlohmann::json> doc;  // kept for the object lookups
};

// False when the file cannot be read or is no topology.
bool LoadTopology(const std::filesystem::path& path, Topology& out);

}  // namespace aerix
