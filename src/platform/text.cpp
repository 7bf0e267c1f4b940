#include "platform/text.hpp"

#include <cstdint>

namespace aerix {

namespace {

void AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

void AppendUtf16(std::u16string& out, char32_t cp) {
    if (cp < 0x10000) {
        out += static_cast<char16_t>(cp);
    } else {
        cp -= 0x10000;
        out += static_cast<char16_t>(0xD800 + (cp >> 10));
        out += static_cast<char16_t>(0xDC00 + (cp & 0x3FF));
    }
}

}  // namespace

std::u16string Utf8ToUtf16(std::string_view text) {
    std::u16string out;
    out.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        auto b = static_cast<std::uint8_t>(text[i]);
        int extra = b < 0x80 ? 0 : (b >> 5) == 6 ? 1 : (b >> 4) == 14 ? 2 : (b >> 3) == 30 ? 3 : -1;
        if (extra < 0 || i + extra >= text.size()) {
            // Not UTF-8: take the byte as Latin-1 so nothing is lost silently.
            out += static_cast<char16_t>(b);
            ++i;
            continue;
        }
        char32_t cp = extra == 0 ? b : (b & (0x3F >> extra));
        bool ok = true;
        for (int k = 1; k <= extra; ++k) {
            auto c = static_cast<std::uint8_t>(text[i + k]);
            if ((c & 0xC0) != 0x80) {
                ok = false;
                break;
            }
            cp = (cp << 6) | (c & 0x3F);
        }
        if (!ok) {
            out += static_cast<char16_t>(b);
            ++i;
            continue;
        }
        AppendUtf16(out, cp);
        i += extra + 1;
    }
    return out;
}

std::string Utf16ToUtf8(std::u16string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t cp = text[i];
        if (cp >= 0xD800 && cp < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
            text[i + 1] < 0xE000) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (text[i + 1] - 0xDC00);
            ++i;
        }
        AppendUtf8(out, cp);
    }
    return out;
}

std::u16string BytesToUtf16(std::string_view bytes) {
    std::u16string out;
    out.reserve(bytes.size());
    for (char c : bytes)
        out += static_cast<char16_t>(static_cast<unsigned char>(c));
    return out;
}

}  // namespace aerix
