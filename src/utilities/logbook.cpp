#include "utilities/logbook.hpp"

#include <cstdio>

#include "platform/message_box.hpp"
#include "platform/services.hpp"

namespace aerix {

std::optional<std::int64_t> ParseLogbookTime(std::string_view text, std::string& error) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    std::size_t colon = text.find(':');
    std::string_view hours = text.substr(0, colon);
    std::string_view minutes = colon == std::string_view::npos ? "" : text.substr(colon + 1);
    auto digits = [](std::string_view s) {
        for (char ch : s) {
            if (ch < '0' || ch > '9')
                return false;
        }
        return !s.empty();
    };
    if (colon == std::string_view::npos || !digits(hours) || hours.size() > 5 || !digits(minutes) ||
        minutes.size() != 2) {
        error = "\"" + std::string(text) + "\" is not a time: write hours and minutes as HH:MM";
        return std::nullopt;
    }
    std::int64_t h = 0;
    for (char ch : hours)
        h = h * 10 + (ch - '0');
    std::int64_t m = (minutes[0] - '0') * 10 + (minutes[1] - '0');
    if (m > 59) {
        error = "\"" + std::string(text) + "\": minutes must be 00 to 59";
        return std::nullopt;
    }
    return h * 60 + m;
}

std::string FormatLogbookTime(std::int64_t minutes) {
    char buf[48];
    std::snprintf(buf, sizeof buf, "%02lld:%02lld", static_cast<long long>(minutes / 60),
                  static_cast<long long>(minutes % 60));
    return buf;
}

void LogbookDialog::Open() {
    platform::SetTitle(kTitle);
}

int LogbookDialog::Close() {
    platform::SetTitle("Aerix");
    return 1;
}

bool LogbookDialog::Add(std::string_view text) {
    std::string error;
    auto value = ParseLogbookTime(text, error);
    if (!value) {
        platform::ShowError(error);
        return false;
    }
    entries_.push_back(FormatLogbookTime(*value));
    minutes_.push_back(*value);
    totalMinutes_ += *value;
    return true;
}

void LogbookDialog::Remove(std::size_t index) {
    if (index >= entries_.size())
        return;
    totalMinutes_ -= minutes_[index];
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(index));
    minutes_.erase(minutes_.begin() + static_cast<std::ptrdiff_t>(index));
}

void LogbookDialog::Clear() {
    entries_.clear();
    minutes_.clear();
    totalMinutes_ = 0;
}

}  // namespace aerix
