// Numbers as text with a decimal point, whatever the user's locale (a desktop locale may use a
// decimal comma): the data files' leading-number reading (the leading number of a text, 0 when
// there is none) and the formatting of the numbers the program shows.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace aerix {

// As "%.*f" in the C locale.
std::string FormatFixed(double value, int decimals);
// As "%.*g" in the C locale.
std::string FormatGeneral(double value, int precision);

// Leading blanks skipped, an optional sign, then as much of a decimal number as there is.
double TextToDouble(std::string_view text);
// Leading blanks skipped, an optional sign, then decimal digits; saturates at the int32 range.
std::int32_t TextToInt32(std::string_view text);

}  // namespace aerix
