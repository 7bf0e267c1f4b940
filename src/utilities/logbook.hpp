// The "Logbook totaliser" flight-computer dialog: adds up flight times typed as "HH:MM".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace aerix {

// Minutes of a "H:MM" entry (hours of one to five digits, minutes 00 to 59); nullopt and a
// message in `error` for anything else.
std::optional<std::int64_t> ParseLogbookTime(std::string_view text, std::string& error);

// "HH:MM" of a number of minutes; hours widen beyond 99.
std::string FormatLogbookTime(std::int64_t minutes);

class LogbookDialog {
  public:
    static constexpr std::string_view kTitle = "Logbook totaliser";

    void Open();
    int Close();

    // Adds an entry to the list and the total; a bad entry is reported and not added.
    bool Add(std::string_view text);
    // Removes the entry at `index` (ignored when out of range).
    void Remove(std::size_t index);
    void Clear();

    const std::vector<std::string>& Entries() const { return entries_; }
    std::int64_t TotalMinutes() const { return totalMinutes_; }
    std::string TotalText() const { return FormatLogbookTime(totalMinutes_); }

  private:
    std::vector<std::string> entries_;
    std::vector<std::int64_t> minutes_;
    std::int64_t totalMinutes_ = 0;
};

}  // namespace aerix
