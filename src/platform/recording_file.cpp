#include "platform/recording_file.hpp"

namespace aerix::platform {

RecordingFile::~RecordingFile() {
    Close();
}

bool RecordingFile::Open(const std::filesystem::path& path, bool overwrite) {
    std::lock_guard lock(mutex_);
    if (file_)
        std::fclose(file_);
    std::error_code ec;
    std::filesystem::create_directories(path.parent_path(), ec);
    file_ = std::fopen(path.c_str(), overwrite ? "wb" : "ab");
    return file_ != nullptr;
}

bool RecordingFile::Write(std::string_view bytes) {
    std::lock_guard lock(mutex_);
    if (!file_)
        return false;
    bool ok = std::fwrite(bytes.data(), 1, bytes.size(), file_) == bytes.size();
    return std::fflush(file_) == 0 && ok;
}

void RecordingFile::Close() {
    std::lock_guard lock(mutex_);
    if (file_)
        std::fclose(file_);
    file_ = nullptr;
}

bool RecordingFile::IsOpen() const {
    std::lock_guard lock(mutex_);
    return file_ != nullptr;
}

}  // namespace aerix::platform
