// Earlier versions of a file the program replaces (the GPS recording, the airspace file) are kept
// beside it as <name>.1, <name>.2, ... : a backup is never written over.
#pragma once

#include <filesystem>
#include <system_error>

namespace aerix::platform {

// <file>.N with N one more than the highest number in use, so the numbers keep the order in which
// the backups were made even after some were deleted.
std::filesystem::path NextBackupName(const std::filesystem::path& file);

// Copies file to NextBackupName(file), never over an existing file. The backup's path; empty when
// file does not exist or on failure (then ec says why and nothing was changed).
std::filesystem::path KeepNumberedBackup(const std::filesystem::path& file, std::error_code& ec);

}  // namespace aerix::platform
