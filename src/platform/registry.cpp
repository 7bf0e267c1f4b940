#include "platform/registry.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <system_error>

#include "platform/numbered_backup.hpp"
#include "platform/registry_names.hpp"
#include "platform/text.hpp"

namespace aerix::platform {

namespace fs = std::filesystem;

namespace {

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
