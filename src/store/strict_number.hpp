// A number typed into a field or read from a data file, where the whole text must be the number
// (unlike the airspace file's leading-number conversion).
#pragma once

#include <cctype>
#include <optional>
#include <string_view>

#include "platform/text.hpp"
#include "platform/text_numbers.hpp"

namespace aerix {

// An optionally signed decimal number with at most one point; nothing for anything else.
inline std::optional<double> StrictNumber(std::string_view text) {
    text = TrimBlanks(text);
    if (text.empty())
        return std::nullopt;
    std::size_t i = (text[0] == '-' || text[0] == '+') ? 1 : 0;
    bool digits = false, dot = false;
    for (; i < text.size(); ++i) {
        if (std::isdigit(static_cast<unsigned char>(text[i]))) {
            digits = true;
        } else if (text[i] == '.' && !dot) {
            dot = true;
        } else {
            return std::nullopt;
        }
    }
    if (!digits)
        return std::nullopt;
    return TextToDouble(text);
}

}  // namespace aerix
