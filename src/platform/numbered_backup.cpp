#include "platform/numbered_backup.hpp"

#include <algorithm>
#include <string>

namespace aerix::platform {

namespace fs = std::filesystem;

namespace {

// N of "<stem>.N", 0 when name is not of that form.
unsigned long BackupNumber(const std::string& name, const std::string& stem) {
    if (name.size() <= stem.size() + 1 || name.compare(0, stem.size(), stem) != 0 ||
        name[stem.size()] != '.')
        return 0;
    unsigned long n = 0;
    for (std::size_t i = stem.size() + 1; i < name.size(); ++i) {
        if (name[i] < '0' || name[i] > '9' || n > 100000000)
            return 0;
        n = n * 10 + static_cast<unsigned long>(name[i] - '0');
    }
    return n;
}

}  // namespace

fs::path NextBackupName(const fs::path& file) {
    const std::string stem = file.filename().string();
    unsigned long highest = 0;
    std::error_code ec;
    fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
    for (const auto& entry : fs::directory_iterator(folder, ec))
        highest = std::max(highest, BackupNumber(entry.path().filename().string(), stem));
    fs::path next = file;
    next += "." + std::to_string(highest + 1);
    return next;
}

fs::path KeepNumberedBackup(const fs::path& file, std::error_code& ec) {
    ec.clear();
    if (!fs::exists(file, ec))
        return {};
    // Another copy may take the name between the look and the copy: then try the next one.
    for (int attempt = 0; attempt < 10; ++attempt) {
        fs::path backup = NextBackupName(file);
        if (fs::copy_file(file, backup, fs::copy_options::none, ec))
            return backup;
        if (ec != std::errc::file_exists)
            break;
    }
    return {};
}

}  // namespace aerix::platform
