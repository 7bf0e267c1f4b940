#include "platform/volume_file.hpp"

#include <sqlite3.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "platform/disk_space.hpp"
#include "platform/sqlite.hpp"
#include "platform/text.hpp"

namespace aerix::platform {

namespace fs = std::filesystem;

namespace {

// Result codes that say the file itself is bad, not merely busy or unreadable now.
bool Damaged(int rc) {
    int primary = rc & 0xFF;
    return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB;
}

// "ok", the first problem found, or empty when the check could not run (rc says why).
std::string QuickCheck(const SqliteDb& db, int& rc) {
    SqliteStmt check = db.Prepare("PRAGMA quick_check(1)");
    rc = check.valid() ? check.Step() : sqlite3_extended_errcode(db.get());
    if (rc != SQLITE_ROW)
        return {};
    return std::string(check.ColumnText(0));
}

}  // namespace

VolumeFileState CheckVolumeFile(const fs::path& file, std::u16string_view database) {
    std::error_code ec;
    if (!fs::exists(file, ec))
        return ec ? VolumeFileState::kUnknown : VolumeFileState::kMissing;
    if (fs::file_size(file, ec) == 0 && !ec)
        return VolumeFileState::kDamaged;
    SqliteDb db;
    if (db.Open(file, false) != SQLITE_OK)
        return VolumeFileState::kUnknown;
    int rc = SQLITE_OK;
    std::string verdict = QuickCheck(db, rc);
    if (verdict.empty())
        return Damaged(rc) ? VolumeFileState::kDamaged : VolumeFileState::kUnknown;
    if (verdict != "ok")
        return VolumeFileState::kDamaged;
    SqliteStmt q = db.Prepare("SELECT count(*) FROM databases WHERE name = ?1");
    if (!q.valid())
        return VolumeFileState::kDamaged;  // no catalogue: not one of our volumes as it should be
    q.BindText(1, Utf16ToUtf8(database));
    rc = q.Step();
    if (rc != SQLITE_ROW)
        return Damaged(rc) ? VolumeFileState::kDamaged : VolumeFileState::kUnknown;
    return q.ColumnInt(0) > 0 ? VolumeFileState::kWhole : VolumeFileState::kDamaged;
}

bool SealVolumeFile(const fs::path& file, bool* diskFull) {
    *diskFull = false;
    SqliteDb db;
    if (db.Open(file, false) != SQLITE_OK)
        return false;
    auto failed = [&](int rc) {
        *diskFull = (rc & 0xFF) == SQLITE_FULL;
        return false;
    };
    {
        SqliteStmt checkpoint = db.Prepare("PRAGMA wal_checkpoint(TRUNCATE)");
        int rc = checkpoint.valid() ? checkpoint.Step() : sqlite3_extended_errcode(db.get());
        if (rc != SQLITE_ROW)
            return failed(rc);
        if (checkpoint.ColumnInt(0) != 0)  // busy: somebody else holds it
            return false;
    }
    // Out of WAL mode the file stands alone; the store turns WAL on again when it opens it.
    {
        SqliteStmt mode = db.Prepare("PRAGMA journal_mode=DELETE");
        int rc = mode.valid() ? mode.Step() : sqlite3_extended_errcode(db.get());
        if (rc != SQLITE_ROW)
            return failed(rc);
        if (mode.ColumnText(0) != "delete")
            return false;
    }
    int rc = SQLITE_OK;
    if (QuickCheck(db, rc) != "ok")
        return rc != SQLITE_ROW ? failed(rc) : false;
    db.Close();
    std::error_code ec;
    if (fs::exists(file.string() + "-wal", ec))
        return false;
    if (!SyncFile(file)) {
        *diskFull = IsOutOfSpace(errno);
        return false;
    }
    return true;
}

}  // namespace aerix::platform
