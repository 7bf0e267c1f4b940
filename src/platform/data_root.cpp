#include "platform/data_root.hpp"

#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <set>
#include <system_error>
#include <vector>

#include "platform/text.hpp"

namespace aerix::platform {

namespace fs = std::filesystem;

namespace {

std::u16string FoldCase(std::u16string_view s) {
    std::u16string out(s);
    for (auto& c : out) {
        if ((c >= u'a' && c <= u'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7))
            c -= 0x20;
    }
    return out;
}

std::vector<std::string> SplitPocketPath(std::string_view path) {
    std::vector<std::string> parts;
    std::string current;
    for (char c : path) {
        if (c == '\\' || c == '/') {
            if (!current.empty())
                parts.push_back(std::move(current));
            current.clear();
        } else {
            current += c;
        }
    }
    if (!current.empty())
        parts.push_back(std::move(current));
    return parts;
}

// Once per path: the map view looks its charts up on every paint.
void ReportRefusal(std::string_view pocketPath, const std::string& why) {
    static std::mutex mutex;
    static std::set<std::string, std::less<>> told;
    std::lock_guard lock(mutex);
    if (!told.emplace(pocketPath).second)
        return;
    std::string shown;
    for (char c : pocketPath)
        shown += c == '\0' ? '?' : c;
    std::fprintf(stderr, "aerix: \"%s\" is refused: %s; names must stay inside the data folder\n",
                 shown.c_str(), why.c_str());
}

}  // namespace

std::string DataRoot::Refusal(std::string_view pocketPath) {
    if (pocketPath.find('\0') != std::string_view::npos)
        return "it holds a NUL character";
    // A separator right after another one is where a name began with one: an absolute path or a
    // drive given where a plain name belongs.
    std::size_t start = 0;
    while (start < pocketPath.size() && (pocketPath[start] == '\\' || pocketPath[start] == '/'))
        ++start;
    for (std::size_t i = start + 1; i < pocketPath.size(); ++i) {
        bool sep = pocketPath[i] == '\\' || pocketPath[i] == '/';
        bool prevSep = pocketPath[i - 1] == '\\' || pocketPath[i - 1] == '/';
        if (sep && prevSep)
            return "a name in it is an absolute path";
    }
    for (const auto& part : SplitPocketPath(pocketPath)) {
        if (part == "..")
            return "it holds a \"..\" component";
        if (part.size() == 2 && part[1] == ':' && std::isalpha(static_cast<unsigned char>(part[0])))
            return "a name in it is an absolute path";
    }
    return {};
}

DataRoot::DataRoot(fs::path root) : root_(std::move(root)) {}

fs::path DataRoot::Choose(const std::optional<fs::path>& homeOption) {
    if (const char* env = std::getenv("AERIX_HOME"); env && *env)
        return fs::path(env);
    if (homeOption && !homeOption->empty())
        return *homeOption;
    if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg && *xdg)
        return fs::path(xdg) / "aerix";
    const char* home = std::getenv("HOME");
    return fs::path(home && *home ? home : ".") / ".local" / "share" / "aerix";
}

fs::path MatchComponent(const fs::path& folder, const std::string& name) {
    std::error_code ec;
    if (name == "." || name == "..")
        return folder / name;
    fs::path exact = folder / name;
    if (fs::exists(fs::symlink_status(exact, ec)))
        return exact;
    if (!fs::is_directory(folder, ec))
        return exact;
    std::u16string wanted = FoldCase(Utf8ToUtf16(name));
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        std::string entry = it->path().filename().string();
        if (FoldCase(Utf8ToUtf16(entry)) == wanted)
            return it->path();
    }
    return exact;
}

fs::path DataRoot::Resolve(std::string_view pocketPath) const {
    if (std::string why = Refusal(pocketPath); !why.empty()) {
        ReportRefusal(pocketPath, why);
        return {};
    }
    fs::path path = root_;
    for (const auto& part : SplitPocketPath(pocketPath))
        path = MatchComponent(path, part);
    return path;
}

fs::path DataRoot::Resolve(std::u16string_view pocketPath) const {
    return Resolve(Utf16ToUtf8(pocketPath));
}

fs::path DataRoot::ResolveForWrite(std::string_view pocketPath) const {
    fs::path path = Resolve(pocketPath);
    if (path.empty())
        return path;
    std::error_code ec;
    fs::create_directories(path.parent_path(), ec);
    return path;
}

fs::path DataRoot::ResolveForWrite(std::u16string_view pocketPath) const {
    return ResolveForWrite(Utf16ToUtf8(pocketPath));
}

bool DataRoot::Create() const {
    std::error_code ec;
    fs::create_directories(root_, ec);
    return fs::is_directory(root_, ec);
}

namespace {

// Ours, a real folder (not a link to one) and closed to group and others.
bool IsPrivateFolder(const fs::path& folder) {
    struct stat st {};
    return ::lstat(folder.c_str(), &st) == 0 && S_ISDIR(st.st_mode) && st.st_uid == ::geteuid() &&
           (st.st_mode & 077) == 0;
}

}  // namespace

fs::path PrivateRuntimeFolder(const fs::path& dataRoot) {
    if (const char* xdg = std::getenv("XDG_RUNTIME_DIR"); xdg && *xdg && IsPrivateFolder(xdg))
        return fs::path(xdg);
    fs::path own = dataRoot / ".runtime";
    std::error_code ec;
    fs::create_directories(dataRoot, ec);
    ::mkdir(own.c_str(), 0700);
    struct stat st {};
    // Left looser by an older run or a copy: ours, so close it.
    if (::lstat(own.c_str(), &st) == 0 && S_ISDIR(st.st_mode) && st.st_uid == ::geteuid())
        ::chmod(own.c_str(), 0700);
    return IsPrivateFolder(own) ? own : fs::path();
}

fs::path ResourcePath(std::string_view name) {
    std::error_code ec;
    if (const char* env = std::getenv("AERIX_RESOURCES"); env && *env) {
        return fs::path(env) / name;
    }
    fs::path source = fs::path(AERIX_RESOURCE_DIR) / name;
    if (fs::exists(source, ec))
        return source;
    return fs::path(AERIX_INSTALL_RESOURCE_DIR) / name;
}

}  // namespace aerix::platform
