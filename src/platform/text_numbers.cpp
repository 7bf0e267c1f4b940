#include "platform/text_numbers.hpp"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace aerix {

namespace {

std::string_view SkipBlanks(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t' || text[i] == '\n' ||
                               text[i] == '\r' || text[i] == '\v' || text[i] == '\f')) {
        ++i;
    }
    return text.substr(i);
}

std::string Format(double value, std::chars_format format, int precision) {
    char buf[400];  // a fixed-point double can run to over 300 digits
    auto result = std::to_chars(buf, buf + sizeof buf, value, format, precision);
    return result.ec == std::errc() ? std::string(buf, result.ptr) : std::string();
}

}  // namespace

std::string FormatFixed(double value, int decimals) {
    return Format(value, std::chars_format::fixed, decimals);
}

std::string FormatGeneral(double value, int precision) {
    return Format(value, std::chars_format::general, precision);
}

double TextToDouble(std::string_view text) {
    text = SkipBlanks(text);
    bool negative = false;
    if (!text.empty() && (text[0] == '+' || text[0] == '-')) {
        negative = text[0] == '-';
        text.remove_prefix(1);
    }
    // from_chars takes no sign of its own here and reads the longest decimal prefix.
    if (text.empty() || text[0] == '+' || text[0] == '-')
        return 0.0;
    double value = 0.0;
    auto result =
        std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::general);
    if (result.ec == std::errc::result_out_of_range) {
        value = std::numeric_limits<double>::infinity();
    } else if (result.ec != std::errc()) {
        return 0.0;
    }
    return negative ? -value : value;
}

std::int32_t TextToInt32(std::string_view text) {
    text = SkipBlanks(text);
    bool negative = false;
    if (!text.empty() && (text[0] == '+' || text[0] == '-')) {
        negative = text[0] == '-';
        text.remove_prefix(1);
    }
    std::int64_t value = 0;
    for (char c : text) {
        if (c < '0' || c > '9')
            break;
        value = value * 10 + (c - '0');
        if (value > 2147483648LL)
            value = 2147483648LL;
    }
    if (negative)
        value = -value;
    if (value > std::numeric_limits<std::int32_t>::max()) {
        return std::numeric_limits<std::int32_t>::max();
    }
    return static_cast<std::int32_t>(value);
}

}  // namespace aerix
