// Wide text helpers: the program keeps UTF-16 in fixed buffers where the original did, and
// converts to UTF-8 only at file and console edges.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace aerix {

std::u16string Utf8ToUtf16(std::string_view text);
std::string Utf16ToUtf8(std::u16string_view text);

// Latin-1 / 8-bit text to UTF-16, byte for byte (what the old multi-byte conversion did for the
// data files, which are plain 8-bit text).
std::u16string BytesToUtf16(std::string_view bytes);

// The text without the white space (blanks, tabs, line ends) around it.
inline std::string_view TrimBlanks(std::string_view s) {
    auto blank = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    while (!s.empty() && blank(s.front()))
        s.remove_prefix(1);
    while (!s.empty() && blank(s.back()))
        s.remove_suffix(1);
    return s;
}

// A fixed, always terminated UTF-16 buffer of N characters (terminator included), as the
// original kept its names and texts.
template <std::size_t N>
struct WideBuf {
    static_assert(N > 0);
    std::array<char16_t, N> chars{};

    static constexpr std::size_t Capacity() { return N; }
    static constexpr std::size_t Bytes() { return N * sizeof(char16_t); }

    char16_t* data() { return chars.data(); }
    const char16_t* data() const { return chars.data(); }

    std::u16string_view view() const {
        auto end = std::find(chars.begin(), chars.end(), u'\0');
        return {chars.data(), static_cast<std::size_t>(end - chars.begin())};
    }
    std::string utf8() const { return Utf16ToUtf8(view()); }
    bool empty() const { return chars[0] == u'\0'; }

    // Copies at most N-1 characters and terminates.
    void assign(std::u16string_view text) {
        std::size_t n = std::min(text.size(), N - 1);
        std::copy_n(text.begin(), n, chars.begin());
        chars[n] = u'\0';
    }
    void clear() { chars.fill(u'\0'); }
};

}  // namespace aerix
