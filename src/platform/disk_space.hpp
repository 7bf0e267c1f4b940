// Telling a full disk from other write failures, and making a finished file durable before it
// is renamed into place.
#pragma once

#include <filesystem>

namespace aerix::platform {

// ENOSPC, EDQUOT, or EFBIG (a file size limit, which a write meets the same way).
bool IsOutOfSpace(int err);
// Whether a few megabytes can still be written in dir: asked after a write failed, while what
// that write left still takes its room.
bool NoRoomLeft(const std::filesystem::path& dir);
// fsync of the file, then of the folder that holds it (after a rename into it).
bool SyncFile(const std::filesystem::path& file);
bool SyncFolder(const std::filesystem::path& dir);

}  // namespace aerix::platform
