// A database volume file looked at from outside the store: whether it can be trusted, and sealing
// one that was built under a temporary name so that it can be renamed into place.
#pragma once

#include <filesystem>
#include <string_view>

namespace aerix::platform {

enum class VolumeFileState {
    kMissing,
    kWhole,    // passes a quick check and holds the database asked for
    kDamaged,  // not a database, fails the check, or lacks the database
    kUnknown,  // could not be looked at now (locked, unreadable): leave it alone
};

VolumeFileState CheckVolumeFile(const std::filesystem::path& file, std::u16string_view database);

// Writes the volume's log back into the file and leaves no log beside it, then checks the file.
// False when that fails; *diskFull says whether for want of room.
bool SealVolumeFile(const std::filesystem::path& file, bool* diskFull);

}  // namespace aerix::platform
