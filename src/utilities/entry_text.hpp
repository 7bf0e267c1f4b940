// Strict reading of what the pilot typed into a utility field: the whole text must be the
// number (spaces around it allowed), so a typing slip is caught instead of read as 0.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace aerix {

// A signed whole number, as an integer edit field holds it.
std::optional<std::int64_t> ParseWholeNumber(std::string_view text);

// A finite decimal number ("12", "-3.5", "1e3").
std::optional<double> ParseDecimal(std::string_view text);

}  // namespace aerix

namespace aerix {

// What a field labelled `label` that does not hold a number says: "<label>: enter a number".
std::string EnterNumberMessage(std::string_view label);

// A decimal number typed into the field labelled `label`; otherwise shows
// EnterNumberMessage(label) and gives nullopt.
std::optional<double> ReadNumberField(std::string_view text, std::string_view label);

}  // namespace aerix
