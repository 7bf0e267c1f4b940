// One line of comma-separated text as OurAirports and SeeYou write it: a field in double quotes
// may hold commas, and "" inside it is one quote.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace aerix {

// Splits line (without its line end) into fields. False when a quoted field is not closed; the
// fields read so far are then in fields.
bool SplitCsvLine(std::string_view line, std::vector<std::string>& fields);

}  // namespace aerix
