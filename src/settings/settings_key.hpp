// Where the persisted settings live: one key under HKEY_LOCAL_MACHINE, shared by the shell's
// settings and the GPS device beside them.
#pragma once

#include <string_view>

namespace aerix {

inline constexpr std::u16string_view kSettingsKey = u"Software\\Qorvane Software\\Aerix";

}  // namespace aerix
