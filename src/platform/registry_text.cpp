#include <cstdio>
#include <optional>

#include "platform/registry_names.hpp"
#include "platform/text.hpp"

namespace aerix::platform {

std::u16string Fold(std::u16string_view s) {
    std::u16string out(s);
    for (auto& c : out) {
        if ((c >= u'a' && c <= u'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7))
            c -= 0x20;
    }
    return out;
}

std::u16string JoinPath(std::u16string_view parent, std::u16string_view sub) {
    std::u16string out(parent);
    std::u16string part;
    auto flush = [&] {
        if (part.empty())
            return;
        if (!out.empty())
            out += u'\\';
        out += part;
        part.clear();
    };
    for (char16_t c : sub) {
        if (c == u'\\') {
            flush();
        } else {
            part += c;
        }
    }
    flush();
    return out;
}

RegValue* FindValue(std::vector<RegValue>& values, std::u16string_view name) {
    std::u16string folded = Fold(name);
    for (auto& v : values) {
        if (Fold(v.name) == folded)
            return &v;
    }
    return nullptr;
}

namespace {

// ---- text form -------------------------------------------------------------------------------

// Line breaks are escaped too: a raw one in a value name would split its line and make the whole
// file unreadable at the next start.
std::string QuoteText(std::string_view text) {
    std::string out = "\"";
    for (char c : text) {
        if (c == '\n') {
            out += "\\n";
        } else if (c == '\r') {
            out += "\\r";
        } else {
            if (c == '\\' || c == '"')
                out += '\\';
            out += c;
        }
    }
    return out + "\"";
}

// A REG_SZ is written as text only when its bytes are exactly what a plain string write gives:
// UTF-16 code units ending in one terminator, no embedded terminators or line breaks.
std::optional<std::string> AsPlainString(const std::vector<std::uint8_t>& data) {
    if (data.size() < 2 || data.size() % 2 != 0)
        return std::nullopt;
    std::u16string units;
    for (std::size_t i = 0; i < data.size(); i += 2) {
        units += static_cast<char16_t>(data[i] | (data[i + 1] << 8));
    }
    if (units.back() != u'\0')
        return std::nullopt;
    units.pop_back();
    for (char16_t c : units) {
        if (c == u'\0' || c == u'\r' || c == u'\n' || (c >= 0xD800 && c < 0xE000)) {
            return std::nullopt;
        }
    }
    return Utf16ToUtf8(units);
}

std::string HexBytes(std::string prefix, const std::vector<std::uint8_t>& data) {
    std::string out = prefix;
    std::size_t lineLength = out.size();
    char buf[4];
    for (std::size_t i = 0; i < data.size(); ++i) {
        std::snprintf(buf, sizeof buf, "%02x", data[i]);
        out += buf;
        lineLength += 2;
        if (i + 1 < data.size()) {
            out += ',';
            ++lineLength;
            if (lineLength > 74) {
                out += "\\\n  ";
                lineLength = 2;
            }
        }
    }
    return out;
}

// ---- parser ------------------------------------------------------------------------------------

struct Cursor {
    std::string_view s;
    std::size_t i = 0;
    bool AtEnd() const { return i >= s.size(); }
    char Peek() const { return AtEnd() ? '\0' : s[i]; }
};

bool ParseQuoted(Cursor& c, std::string* out) {
    if (c.Peek() != '"')
        return false;
    ++c.i;
    while (!c.AtEnd()) {
        char ch = c.s[c.i++];
        if (ch == '"')
            return true;
        if (ch == '\\') {
            if (c.AtEnd())
                return false;
            ch = c.s[c.i++];
            ch = ch == 'n' ? '\n' : ch == 'r' ? '\r' : ch;
        }
        *out += ch;
    }
    return false;
}

bool ParseHexList(std::string_view text, std::vector<std::uint8_t>* out) {
    std::size_t i = 0;
    auto skipBlanks = [&] {
        while (i < text.size() && (text[i] == ' ' || text[i] == '\t'))
            ++i;
    };
    skipBlanks();
    if (i == text.size())
        return true;  // no bytes
    while (true) {
        skipBlanks();
        if (i + 2 > text.size() || !std::isxdigit(static_cast<unsigned char>(text[i])) ||
            !std::isxdigit(static_cast<unsigned char>(text[i + 1]))) {
            return false;
        }
        out->push_back(
            static_cast<std::uint8_t>(std::stoi(std::string(text.substr(i, 2)), nullptr, 16)));
        i += 2;
        skipBlanks();
        if (i == text.size())
            return true;
        if (text[i] != ',')
            return false;
        ++i;
    }
}

std::optional<std::string> ParseValue(std::string_view line, RegValue* value) {
    Cursor c{line};
    std::string name;
    if (c.Peek() == '@') {
        ++c.i;
    } else if (!ParseQuoted(c, &name)) {
        return "a value name in quotes was expected";
    }
    if (c.Peek() != '=')
        return "'=' was expected after the value name";
    ++c.i;
    value->name = Utf8ToUtf16(name);
    std::string_view rest = line.substr(c.i);
    if (!rest.empty() && rest[0] == '"') {
        Cursor t{rest};
        std::string text;
        if (!ParseQuoted(t, &text) || t.i != rest.size())
            return "the text value is not closed";
        std::u16string units = Utf8ToUtf16(text);
        units += u'\0';
        value->type = kRegSz;
        for (char16_t u : units) {
            value->data.push_back(static_cast<std::uint8_t>(u & 0xFF));
            value->data.push_back(static_cast<std::uint8_t>(u >> 8));
        }
        return std::nullopt;
    }
    if (rest.rfind("dword:", 0) == 0) {
        std::string_view digits = rest.substr(6);
        if (digits.size() != 8)
            return "a dword needs eight hex digits";
        for (char d : digits) {
            if (!std::isxdigit(static_cast<unsigned char>(d)))
                return "a dword needs hex digits";
        }
        auto v = static_cast<std::uint32_t>(std::stoul(std::string(digits), nullptr, 16));
        value->type = kRegDword;
        value->data = {static_cast<std::uint8_t>(v), static_cast<std::uint8_t>(v >> 8),
                       static_cast<std::uint8_t>(v >> 16), static_cast<std::uint8_t>(v >> 24)};
        return std::nullopt;
    }
    std::size_t colon = rest.find(':');
    if (colon == std::string_view::npos)
        return "unknown value form";
    std::string_view kind = rest.substr(0, colon);
    if (kind == "hex") {
        value->type = kRegBinary;
    } else if (kind.size() > 5 && kind.rfind("hex(", 0) == 0 && kind.back() == ')') {
        std::string digits(kind.substr(4, kind.size() - 5));
        if (digits.empty() || digits.size() > 8 ||
            digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) {
            return "bad value type in hex(...)";
        }
        value->type = static_cast<std::uint32_t>(std::stoul(digits, nullptr, 16));
    } else {
        return "unknown value form";
    }
    if (!ParseHexList(rest.substr(colon + 1), &value->data))
        return "bad hex bytes";
    return std::nullopt;
}

std::string_view Trim(std::string_view s) {
    while (!s.empty() && (s.back() == '\r' || s.back() == ' ' || s.back() == '\t'))
        s.remove_suffix(1);
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t'))
        s.remove_prefix(1);
    return s;
}

}  // namespace

std::string ValueLine(const RegValue& v) {
    std::string name = v.name.empty() ? "@" : QuoteText(Utf16ToUtf8(v.name));
    if (v.type == kRegSz) {
        if (auto text = AsPlainString(v.data))
            return name + "=" + QuoteText(*text);
        return HexBytes(name + "=hex(1):", v.data);
    }
    if (v.type == kRegDword && v.data.size() == 4) {
        std::uint32_t value = v.data[0] | (v.data[1] << 8) | (v.data[2] << 16) |
                              (static_cast<std::uint32_t>(v.data[3]) << 24);
        char buf[16];
        std::snprintf(buf, sizeof buf, "%08x", value);
        return name + "=dword:" + buf;
    }
    if (v.type == kRegBinary)
        return HexBytes(name + "=hex:", v.data);
    char prefix[24];
    std::snprintf(prefix, sizeof prefix, "=hex(%x):", v.type);
    return HexBytes(name + prefix, v.data);
}

std::optional<std::string> ParseRegistryText(std::string_view text, std::vector<ParsedKey>* keys) {
    std::vector<std::string> lines;
    {
        std::string current;
        for (char c : text) {
            if (c == '\n') {
                lines.push_back(std::move(current));
                current.clear();
            } else {
                current += c;
            }
        }
        if (!current.empty())
            lines.push_back(std::move(current));
    }
    bool sawHeader = false;
    ParsedKey* key = nullptr;
    for (std::size_t n = 0; n < lines.size(); ++n) {
        std::string line(Trim(lines[n]));
        std::size_t lineNumber = n + 1;
        auto fail = [&](const std::string& why) {
            return "line " + std::to_string(lineNumber) + ": " + why;
        };
        if (line.empty() || line[0] == ';')
            continue;
        if (!sawHeader) {
            if (line != "REGEDIT4" && line != "Windows Registry Editor Version 5.00") {
                return fail("the file does not start with REGEDIT4");
            }
            sawHeader = true;
            continue;
        }
        // Joined continuation lines of a long hex value.
        while (!line.empty() && line.back() == '\\' && n + 1 < lines.size()) {
            line.pop_back();
            line += Trim(lines[++n]);
        }
        if (line[0] == '[') {
            if (line.back() != ']')
                return fail("a key name must end with ']'");
            std::string path = line.substr(1, line.size() - 2);
            std::string root = path.substr(0, path.find('\\'));
            if (Fold(Utf8ToUtf16(root)) != Fold(Utf8ToUtf16(kRootName))) {
                return fail("only HKEY_LOCAL_MACHINE keys are kept here");
            }
            std::string sub = root.size() < path.size() ? path.substr(root.size() + 1) : "";
            keys->push_back({JoinPath(u"", Utf8ToUtf16(sub)), {}});
            key = &keys->back();
            continue;
        }
        if (!key)
            return fail("a value stands before any key");
        RegValue value;
        if (auto error = ParseValue(line, &value))
            return fail(*error);
        if (RegValue* old = FindValue(key->values, value.name)) {
            *old = std::move(value);
        } else {
            key->values.push_back(std::move(value));
        }
    }
    if (!sawHeader && !lines.empty()) {
        for (const auto& l : lines) {
            if (!Trim(l).empty())
                return std::string("the file does not start with REGEDIT4");
        }
    }
    return std::nullopt;
}

}  // namespace aerix::platform
