// The GPS recording file: appended to by a feed thread, closed at once by the user-interface
// thread (Preferences, Disconnect). Each line is flushed as written, so a crash loses at most the
// line being written.
#pragma once

#include <cstdio>
#include <filesystem>
#include <mutex>
#include <string_view>

namespace aerix::platform {

class RecordingFile {
  public:
    RecordingFile() = default;
    ~RecordingFile();
    RecordingFile(const RecordingFile&) = delete;
    RecordingFile& operator=(const RecordingFile&) = delete;

    // overwrite: start a new file; otherwise append (creating the file if needed).
    bool Open(const std::filesystem::path& path, bool overwrite);
    // Writes the bytes as given and flushes; false when the file is not open or the write fails.
    bool Write(std::string_view bytes);
    void Close();
    bool IsOpen() const;

  private:
    mutable std::mutex mutex_;
    std::FILE* file_ = nullptr;
};

}  // namespace aerix::platform
