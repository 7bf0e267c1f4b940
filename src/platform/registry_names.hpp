// The hive's names and its text form, shared by the hive and its file inside the platform layer.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/registry.hpp"

namespace aerix::platform {

inline constexpr std::string_view kRootName = "HKEY_LOCAL_MACHINE";

// Names ignore letter case as the platform's did, Latin-1 letters included ("Zürich" is "ZÜRICH").
std::u16string Fold(std::u16string_view s);
// Joins key paths, dropping empty components and stray separators.
std::u16string JoinPath(std::u16string_view parent, std::u16string_view sub);
RegValue* FindValue(std::vector<RegValue>& values, std::u16string_view name);
// One value as its line of the file.
std::string ValueLine(const RegValue& v);

}  // namespace aerix::platform
