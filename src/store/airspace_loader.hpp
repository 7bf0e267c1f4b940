// Loads the airspace outlines of "\My Documents\aerix\EuroAip.txt" that lie in the area bounds
// into nav.AirspaceOverlay.
#pragma once

#include <cstddef>
#include <filesystem>

#include "store/nav_data_state.hpp"

namespace aerix {

inline constexpr char kAirspaceFile[] = "\\My Documents\\aerix\\EuroAip.txt";
// The fixed block: 28,030 entries, one of which always stays free.
inline constexpr std::size_t kAirspaceBlockEntries = 28030;
inline constexpr std::size_t kAirspaceMaxEntries = kAirspaceBlockEntries - 1;
// Longest line the loader takes; a longer one is skipped whole.
inline constexpr std::size_t kAirspaceMaxLine = 4096;

void LoadAirspace(NavDataState& nav);
// The same from any file (the tool's "airspace load FILE").
void LoadAirspaceFrom(NavDataState& nav, const std::filesystem::path& file);

}  // namespace aerix
