#include "store/airspace_loader.hpp"

#include <cstdio>
#include <memory>
#include <string>

#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "platform/text_numbers.hpp"
#include "store/field_splitter.hpp"

namespace aerix {

namespace {

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

bool InsideArea(const NavDataState& nav, std::int32_t latitude, std::int32_t longitude) {
    return nav.AreaSouth <= latitude && latitude <= nav.AreaNorth && nav.AreaWest <= longitude &&
           longitude <= nav.AreaEast;
}

class AirspaceReader {
  public:
    // Fills block with the outlines inside the area bounds of nav.
    AirspaceReader(std::vector<AirspaceEntry>& block, const NavDataState& nav)
        : block_(block), nav_(nav) {}

    // Splits one line into the next free entry and keeps or drops it; false once the block is full.
    bool TakeLine(std::string_view line) {
        AirspaceEntry& entry = block_[kept_];
        entry = AirspaceEntry{};
        // A field the line lacks converts the previous field's text again: the buffer is shared.
        SplitField(line, 0, field_);
        std::string_view keyword = field_.Text().substr(0, 9);
        entry.keyword.assign(BytesToUtf16(keyword));
        SplitField(line, 1, field_);
        entry.latitude = TextToInt32(field_.Text());
        SplitField(line, 2, field_);
        entry.longitude = TextToInt32(field_.Text());
        SplitField(line, 3, field_);
        entry.valueA = TextToDouble(field_.Text());
        SplitField(line, 4, field_);
        entry.valueB = TextToDouble(field_.Text());
        SplitField(line, 5, field_);
        entry.valueC = TextToDouble(field_.Text());
        SplitField(line, 6, field_);
        entry.valueD = TextToInt32(field_.Text());

        // A whole outline is kept or dropped by its first point.
        if (entry.keyword.view() != u"GLINETO")
            keep_ = InsideArea(nav_, entry.latitude, entry.longitude);
        if (keep_)
            ++kept_;
        return kept_ < kAirspaceMaxEntries;
    }

    std::size_t Kept() const { return kept_; }

  private:
    std::vector<AirspaceEntry>& block_;
    const NavDataState& nav_;
    FieldBuffer field_;
    std::size_t kept_ = 0;
    bool keep_ = true;
};

}  // namespace

void LoadAirspaceFrom(NavDataState& nav, const std::filesystem::path& file) {
    nav.AirspaceOverlay.assign(kAirspaceBlockEntries, AirspaceEntry{});
    std::unique_ptr<std::FILE, FileCloser> in(std::fopen(file.c_str(), "rb"));
    if (!in) {
        // The count is left alone; at start-up it is still 0.
        platform::ShowError("Could not open airspace txt file. Error:");
        return;
    }
    AirspaceReader reader(nav.AirspaceOverlay, nav);
    std::string line;
    bool overlong = false;
    char chunk[65536];
    bool full = false;
    while (!full) {
        std::size_t n = std::fread(chunk, 1, sizeof chunk, in.get());
        if (n == 0)
            break;
        for (std::size_t i = 0; i < n && !full; ++i) {
            char byte = chunk[i];
            if (byte != '\n') {
                if (line.size() < kAirspaceMaxLine) {
                    line += byte;
                } else {
                    overlong = true;
                }
                continue;
            }
            // Lines end in CR LF: the byte before the LF goes. A bare LF line loses its last
            // character.
            if (!line.empty())
                line.pop_back();
            if (!overlong)
                full = !reader.TakeLine(line);
            line.clear();
            overlong = false;
        }
    }
    // A last line without a line feed is not taken.
    nav.AirspaceEntryCount = static_cast<std::uint32_t>(reader.Kept());
    nav.AirspaceOverlay.resize(reader.Kept());
    nav.AirspaceOverlay.shrink_to_fit();
}

void LoadAirspace(NavDataState& nav) {
    LoadAirspaceFrom(nav, platform::Sys().root->Resolve(kAirspaceFile));
}

}  // namespace aerix
