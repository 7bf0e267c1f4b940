#include "platform/registry.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <system_error>

#include "platform/numbered_backup.hpp"
#include "platform/text.hpp"

namespace aerix::platform {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kRootName = "HKEY_LOCAL_MACHINE";

// Names ignore letter case as the platform's did, Latin-1 letters included ("Zürich" is "ZÜRICH").
std::u16string Fold(std::u16string_view s) {
    std::u16string out(s);
    for (auto& c : out) {
        if ((c >= u'a' && c <= u'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7))
            c -= 0x20;
    }
    return out;
}

// Joins key paths, dropping empty components and stray separators.
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

bool WriteAll(int fd, const std::string& text) {
    std::size_t done = 0;
    while (done < text.size()) {
        ssize_t n = ::write(fd, text.data() + done, text.size() - done);
        if (n <= 0)
            return false;
        done += static_cast<std::size_t>(n);
    }
    return true;
}

}  // namespace

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

RegistryHive::RegistryHive() {
    keys_[u""] = Key{};
}

RegistryHive::RegistryHive(fs::path file) : file_(std::move(file)) {
    keys_[u""] = Key{};
    Load();
}

void RegistryHive::Load() {
    std::error_code ec;
    // A temporary file left by an interrupted save is incomplete by definition.
    fs::remove(fs::path(file_.string() + ".tmp"), ec);
    if (!fs::exists(file_, ec))
        return;
    std::vector<ParsedKey> parsed;
    std::optional<std::string> error;
    // The settings take a few kB; a file far larger is not ours and is not read into memory.
    std::uintmax_t size = fs::file_size(file_, ec);
    if (!ec && size > kMaxRegistryFileBytes) {
        error = "it is larger than 1 MB";
    } else {
        std::ifstream in(file_, std::ios::binary);
        std::stringstream buffer;
        buffer << in.rdbuf();
        if (!in && !in.eof()) {
            error = "it could not be read";
        } else {
            error = ParseRegistryText(buffer.str(), &parsed);
        }
    }
    if (!error) {
        for (auto& k : parsed) {
            EnsureKey(k.path);
            Key& key = keys_[Fold(k.path)];
            key.path = k.path;
            for (auto& v : k.values) {
                if (RegValue* old = FindValue(key.values, v.name)) {
                    *old = std::move(v);
                } else {
                    key.values.push_back(std::move(v));
                }
            }
        }
        return;
    }
    // An earlier unreadable file is kept too: registry.reg.bad, then .bad.1, .bad.2, ...
    fs::path bad = file_.string() + ".bad";
    if (fs::exists(fs::symlink_status(bad, ec)))
        bad = NextBackupName(bad);
    fs::rename(file_, bad, ec);
    if (ec) {
        // Saving would write over it: this run keeps its settings in memory only.
        keepFile_ = true;
        notice_ = "The settings file " + file_.string() + " could not be read (" + *error +
                  ") nor set aside (" + ec.message() +
                  "). It is left as it is and settings changed now are not saved.";
        return;
    }
    notice_ = "The settings file " + file_.string() + " could not be read (" + *error +
              "). It has been kept as " + bad.filename().string() +
              " and Aerix starts with its default settings.";
}

long RegistryHive::Inject(RegOp op, std::u16string_view name) const {
    return injector_ ? injector_(op, name) : kErrorSuccess;
}

std::optional<std::u16string> RegistryHive::PathOf(HKEY key) const {
    if (key == kHkeyLocalMachine)
        return std::u16string();
    auto it = handles_.find(key);
    if (it == handles_.end())
        return std::nullopt;
    return it->second;
}

bool RegistryHive::EnsureKey(const std::u16string& full) {
    // Every ancestor of a key exists as a key of its own.
    bool created = false;
    std::size_t end = 0;
    while (end != std::u16string::npos) {
        end = full.find(u'\\', end == 0 ? 0 : end + 1);
        std::u16string prefix = full.substr(0, end);
        if (keys_.try_emplace(Fold(prefix), Key{prefix, {}}).second)
            created = true;
    }
    return created;
}

HKEY RegistryHive::NewHandle(const std::u16string& folded) {
    HKEY h = nextHandle_++;
    handles_[h] = folded;
    return h;
}

long RegistryHive::CreateKey(HKEY parent, std::u16string_view subKey, HKEY* result,
                             std::uint32_t* disposition) {
    std::lock_guard lock(mutex_);
    if (long e = Inject(RegOp::CreateKey, subKey))
        return e;
    auto parentPath = PathOf(parent);
    if (!parentPath || !result)
        return kErrorInvalidHandle;
    // A key name is written unquoted on a line of its own.
    if (subKey.find_first_of(u"\r\n") != std::u16string_view::npos)
        return kErrorInvalidParameter;
    std::u16string spelled = keys_[*parentPath].path;
    std::u16string full = JoinPath(spelled, subKey);
    bool created = EnsureKey(full);
    if (created)
        dirty_ = true;
    if (disposition)
        *disposition = created ? kRegCreatedNewKey : kRegOpenedExistingKey;
    *result = NewHandle(Fold(full));
    return kErrorSuccess;
}

long RegistryHive::OpenKey(HKEY parent, std::u16string_view subKey, HKEY* result) {
    std::lock_guard lock(mutex_);
    if (long e = Inject(RegOp::OpenKey, subKey))
        return e;
    auto parentPath = PathOf(parent);
    if (!parentPath || !result)
        return kErrorInvalidHandle;
    std::u16string folded = Fold(JoinPath(keys_[*parentPath].path, subKey));
    if (!keys_.count(folded))
        return kErrorFileNotFound;
    *result = NewHandle(folded);
    return kErrorSuccess;
}

long RegistryHive::QueryValue(HKEY key, std::u16string_view name, std::uint32_t* type, void* data,
                              std::uint32_t* size) {
    std::lock_guard lock(mutex_);
    if (long e = Inject(RegOp::QueryValue, name))
        return e;
    auto path = PathOf(key);
    if (!path)
        return kErrorInvalidHandle;
    if (data && !size)
        return kErrorInvalidParameter;
    RegValue* value = FindValue(keys_[*path].values, name);
    if (!value)
        return kErrorFileNotFound;
    if (type)
        *type = value->type;
    auto length = static_cast<std::uint32_t>(value->data.size());
    if (data) {
        if (*size < length) {
            *size = length;
            return kErrorMoreData;
        }
        if (length)
            std::memcpy(data, value->data.data(), length);
    }
    if (size)
        *size = length;
    return kErrorSuccess;
}

long RegistryHive::SetValue(HKEY key, std::u16string_view name, std::uint32_t type,
                            const void* data, std::uint32_t size) {
    std::lock_guard lock(mutex_);
    if (long e = Inject(RegOp::SetValue, name))
        return e;
    auto path = PathOf(key);
    if (!path)
        return kErrorInvalidHandle;
    if (size && !data)
        return kErrorInvalidParameter;
    RegValue value{std::u16string(name), type, {}};
    if (size) {
        const auto* bytes = static_cast<const std::uint8_t*>(data);
        value.data.assign(bytes, bytes + size);
    }
    auto& values = keys_[*path].values;
    if (RegValue* old = FindValue(values, name)) {
        old->type = value.type;
        old->data = std::move(value.data);
    } else {
        values.push_back(std::move(value));
    }
    dirty_ = true;
    return kErrorSuccess;
}

long RegistryHive::EnumKey(HKEY key, std::uint32_t index, std::u16string* name) {
    std::lock_guard lock(mutex_);
    if (long e = Inject(RegOp::EnumKey, u""))
        return e;
    auto path = PathOf(key);
    if (!path || !name)
        return kErrorInvalidHandle;
    std::u16string prefix = path->empty() ? u"" : *path + u"\\";
    std::uint32_t seen = 0;
    for (auto it = keys_.lower_bound(prefix); it != keys_.end(); ++it) {
        const std::u16string& folded = it->first;
        if (folded.compare(0, prefix.size(), prefix) != 0)
            break;
        if (folded.size() == prefix.size())
            continue;
        if (folded.find(u'\\', prefix.size()) != std::u16string::npos)
            continue;
        if (seen++ == index) {
            *name =
                it->second.path.substr(it->second.path.size() - (folded.size() - prefix.size()));
            return kErrorSuccess;
        }
    }
    return kErrorNoMoreItems;
}

long RegistryHive::CloseKey(HKEY key) {
    std::lock_guard lock(mutex_);
    if (long e = Inject(RegOp::CloseKey, u""))
        return e;
    if (key == kHkeyLocalMachine)
        return kErrorSuccess;
    if (!handles_.erase(key))
        return kErrorInvalidHandle;
    if (dirty_ && !SaveLocked())
        return kErrorWriteFault;
    return kErrorSuccess;
}

bool RegistryHive::Save() {
    std::lock_guard lock(mutex_);
    return SaveLocked();
}

bool RegistryHive::SaveLocked() {
    if (keepFile_)
        return false;
    if (file_.empty()) {
        dirty_ = false;
        return true;
    }
    std::error_code ec;
    if (file_.has_parent_path())
        fs::create_directories(file_.parent_path(), ec);
    std::string text = Serialize();
    fs::path tmp = file_.string() + ".tmp";
    int fd = ::open(tmp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0)
        return false;
    bool ok = WriteAll(fd, text) && ::fsync(fd) == 0;
    ok = (::close(fd) == 0) && ok;
    if (!ok) {
        fs::remove(tmp, ec);
        return false;
    }
    fs::rename(tmp, file_, ec);
    if (ec) {
        fs::remove(tmp, ec);
        return false;
    }
    // Make the rename itself durable.
    int dir = ::open(file_.has_parent_path() ? file_.parent_path().c_str() : ".",
                     O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dir >= 0) {
        ::fsync(dir);
        ::close(dir);
    }
    dirty_ = false;
    return true;
}

std::string RegistryHive::Serialize() const {
    std::string out = "REGEDIT4\n";
    for (const auto& [folded, key] : keys_) {
        std::string name(kRootName);
        if (!key.path.empty())
            name += "\\" + Utf16ToUtf8(key.path);
        out += "\n[" + name + "]\n";
        for (const auto& v : key.values)
            out += ValueLine(v) + "\n";
    }
    return out;
}

std::optional<std::string> RegistryHive::TakeLoadNotice() {
    std::lock_guard lock(mutex_);
    auto notice = std::move(notice_);
    notice_.reset();
    return notice;
}

std::vector<RegValue> RegistryHive::Values(std::u16string_view keyPath) const {
    std::lock_guard lock(mutex_);
    auto it = keys_.find(Fold(JoinPath(u"", keyPath)));
    return it == keys_.end() ? std::vector<RegValue>{} : it->second.values;
}

bool RegistryHive::KeyExists(std::u16string_view keyPath) const {
    std::lock_guard lock(mutex_);
    return keys_.count(Fold(JoinPath(u"", keyPath))) > 0;
}

void RegistryHive::SetFaultInjector(std::function<long(RegOp, std::u16string_view)> injector) {
    std::lock_guard lock(mutex_);
    injector_ = std::move(injector);
}

}  // namespace aerix::platform
