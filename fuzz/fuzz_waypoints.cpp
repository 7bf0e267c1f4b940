// libFuzzer target: arbitrary text as a waypoint file (SeeYou and OurAirports readers). Every
// record it keeps must fit the in-memory database, lie on the globe, have an elevation on Earth
// and no NUL in its name; every problem must name a line of the input.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "store/waypoint_import.hpp"

namespace {

void Check(std::string_view text, std::string_view name) {
    aerix::WaypointParse p = aerix::ParseWaypointFile(text, name);
    auto lines = static_cast<int>(std::count(text.begin(), text.end(), '\n')) + 1;
    for (const aerix::WaypointRecord& r : p.records) {
        if (r.Name.empty() || r.Name.size() > aerix::kWptNameChars ||
            r.Ident.size() > aerix::kWptIdentChars || r.ExtraText.size() > aerix::kWptExtraChars)
            std::abort();
        if (r.Latitude < -90 * 6000 || r.Latitude > 90 * 6000 || r.Longitude < -180 * 6000 ||
            r.Longitude > 180 * 6000 || r.WaypointType < 1 || r.WaypointType > 9)
            std::abort();
        if (!(r.Value104 >= -1500 && r.Value104 <= 30000) ||
            r.Name.find(u'\0') != std::u16string::npos || r.Text106.find(u"inf") == 0)
            std::abort();
    }
    for (const aerix::WaypointProblem& problem : p.problems)
        if (problem.line < 1 || problem.line > lines)
            std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);
    Check(text, "input.cup");
    Check(text, "input.csv");
    return 0;
}
