// The data files' line format: fields separated by the byte 0xB8, every field (the last one too)
// followed by a separator before the line end.
#pragma once

#include <array>
#include <string_view>

namespace aerix {

inline constexpr char kFieldSeparator = '\xB8';

// The conversion buffer the splitter writes into. It outlives single lines on purpose: a field the
// line lacks leaves the previous text in place. Its last byte is always a terminator.
struct FieldBuffer {
    static constexpr std::size_t kSize = 256;
    std::array<char, kSize> bytes{};
    // The text up to the first terminator.
    std::string_view Text() const;
};

// Copies field `index` (from 0) of `line` into `buffer`. Returns 1 when a separator ended the
// field (the copy is then terminated). Returns 0 when the line has fewer fields (the buffer is
// untouched) or when the line ended the field: then the bytes are copied over whatever the buffer
// held, without a terminator. A field longer than the buffer is cut.
int SplitField(std::string_view line, int index, FieldBuffer& buffer);

}  // namespace aerix
