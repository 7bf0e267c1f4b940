#include "utilities/entry_text.hpp"

#include <charconv>
#include <cmath>
#include <string>

#include "platform/message_box.hpp"
#include "platform/text.hpp"

namespace aerix {

namespace {

std::string_view Trim(std::string_view text) {
    return TrimBlanks(text);
}

}  // namespace

std::optional<std::int64_t> ParseWholeNumber(std::string_view text) {
    text = Trim(text);
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    std::int64_t value = 0;
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec != std::errc() || end != text.data() + text.size() || text.empty())
        return std::nullopt;
    return value;
}

std::optional<double> ParseDecimal(std::string_view text) {
    text = Trim(text);
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    double value = 0;
    auto [end, ec] =
        std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::general);
    if (ec != std::errc() || end != text.data() + text.size() || text.empty() ||
        !std::isfinite(value))
        return std::nullopt;
    return value;
}

}  // namespace aerix

namespace aerix {

std::string EnterNumberMessage(std::string_view label) {
    return std::string(label) + ": enter a number";
}

std::optional<double> ReadNumberField(std::string_view text, std::string_view label) {
    auto value = ParseDecimal(text);
    if (!value)
        platform::ShowError(EnterNumberMessage(label));
    return value;
}

}  // namespace aerix
