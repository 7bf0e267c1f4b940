// Number reading as the data files need it: the leading number of a text, 0 when there is none,
// independent of the user's locale (a desktop locale may use a decimal comma).
#pragma once

#include <cstdint>
#include <string_view>

namespace aerix {

// Leading blanks skipped, an optional sign, then as much of a decimal number as there is.
double TextToDouble(std::string_view text);
// Leading blanks skipped, an optional sign, then decimal digits; saturates at the int32 range.
std::int32_t TextToInt32(std::string_view text);

}  // namespace aerix
