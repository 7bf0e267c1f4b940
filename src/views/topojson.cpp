#include "views/topojson.hpp"

#include <algorithm>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>

namespace aerix {

using nlohmann::json;

namespace {

// A ring from arc indices; ~i runs arc i backwards. Each arc after the first repeats the
// previous one's last point, which is dropped.
Ring JoinArcs(const Topology& t, const json& indices) {
    Ring ring;
    for (const json& v : indices) {
        int index = v.get<int>();
        bool reverse = index < 0;
        std::size_t arc = static_cast<std::size_t>(reverse ? ~index : index);
        if (arc >= t.arcs.size())
            continue;
        Ring points = t.arcs[arc];
        if (reverse)
            std::reverse(points.begin(), points.end());
        if (!ring.empty() && !points.empty())
            points.erase(points.begin());
        ring.insert(ring.end(), points.begin(), points.end());
    }
    return ring;
}

void CollectRings(const Topology& t, const json& geometry, std::vector<Ring>& rings) {
    const std::string type = geometry.value("type", "");
    if (type == "GeometryCollection") {
        for (const json& g : geometry.value("geometries", json::array()))
            CollectRings(t, g, rings);
    } else if (type == "Polygon") {
        for (const json& r : geometry["arcs"])
            rings.push_back(JoinArcs(t, r));
    } else if (type == "MultiPolygon") {
        for (const json& polygon : geometry["arcs"])
            for (const json& r : polygon)
                rings.push_back(JoinArcs(t, r));
    }
}

void CountArcs(const json& node, std::map<int, int>& uses, int& geometryUses) {
    if (node.is_number_integer()) {
        int index = node.get<int>();
        uses[index < 0 ? ~index : index] += 1;
        ++geometryUses;
    } else if (node.is_array()) {
        for (const json& n : node)
            CountArcs(n, uses, geometryUses);
    }
}

bool Decode(std::istream& in, Topology& out);

}  // namespace

bool LoadTopology(const std::filesystem::path& path, Topology& out) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return false;
    try {
        return Decode(in, out);
    } catch (const json::exception&) {
        // A malformed document: no chart data rather than a crash.
        return false;
    }
}

namespace {
bool Decode(std::istream& in, Topology& out) {
    auto parsed = std::make_shared<json>(json::parse(in, nullptr, false));
    const json& doc = *parsed;
    if (doc.is_discarded() || doc.value("type", "") != "Topology" || !doc.contains("arcs"))
        return false;
    double sx = 1, sy = 1, tx = 0, ty = 0;
    if (doc.contains("transform")) {
        sx = doc["transform"]["scale"][0].get<double>();
        sy = doc["transform"]["scale"][1].get<double>();
        tx = doc["transform"]["translate"][0].get<double>();
        ty = doc["transform"]["translate"][1].get<double>();
    }
    out.arcs.clear();
    for (const json& arc : doc["arcs"]) {
        Ring ring;
        long long x = 0, y = 0;
        for (const json& p : arc) {
            // Positions after the first are differences from the one before.
            x += p[0].get<long long>();
            y += p[1].get<long long>();
            ring.push_back({static_cast<double>(x) * sx + tx, static_cast<double>(y) * sy + ty});
        }
        out.arcs.push_back(std::move(ring));
    }
    out.doc = std::move(parsed);
    return true;
}
}  // namespace

std::vector<Ring> Topology::Rings(const std::string& object) const {
    std::vector<Ring> rings;
    if (!doc)
        return {};
    const json& d = *doc;
    if (!d.contains("objects") || !d["objects"].contains(object))
        return rings;
    CollectRings(*this, d["objects"][object], rings);
    return rings;
}

std::vector<int> Topology::SharedArcs(const std::string& object) const {
    std::map<int, int> uses;
    if (!doc)
        return {};
    const json& d = *doc;
    if (!d.contains("objects") || !d["objects"].contains(object))
        return {};
    for (const json& g : d["objects"][object].value("geometries", json::array())) {
        int n = 0;
        if (g.contains("arcs"))
            CountArcs(g["arcs"], uses, n);
    }
    std::vector<int> shared;
    for (const auto& [arc, count] : uses)
        if (count >= 2)
            shared.push_back(arc);
    return shared;
}

}  // namespace aerix
