#include "platform/db_volume.hpp"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <fstream>

#include "platform/db_volume_detail.hpp"
#include "platform/prop_codec.hpp"
#include "platform/text.hpp"

namespace aerix::platform {

namespace fs = std::filesystem;

namespace {

constexpr std::int64_t kFormatVersion = 1;
constexpr std::uint64_t kOidBlock = 1024;

// A non-empty file must look like a whole SQLite database before SQLite may touch it: the magic
// text, a page size, a length of whole pages, and no fewer pages than its header records.
bool LooksLikeWholeDatabase(const fs::path& file, std::uintmax_t size) {
    std::ifstream in(file, std::ios::binary);
    unsigned char h[100];
    if (!in.read(reinterpret_cast<char*>(h), sizeof h))
        return false;
    if (std::memcmp(h, "SQLite format 3", 16) != 0)
        return false;
    std::uint32_t pageSize = (h[16] << 8) | h[17];
    if (pageSize == 1)
        pageSize = 65536;
    if (pageSize < 512 || (pageSize & (pageSize - 1)) != 0)
        return false;
    if (size % pageSize != 0)
        return false;
    auto be32 = [&h](int at) {
        return (std::uint32_t(h[at]) << 24) | (std::uint32_t(h[at + 1]) << 16) |
               (std::uint32_t(h[at + 2]) << 8) | h[at + 3];
    };
    std::uint32_t pages = be32(28);
    bool sizeValid = pages != 0 && be32(24) == be32(92);
    return !sizeValid || std::uintmax_t(pages) * pageSize <= size;
}

}  // namespace

StoreError Refined(StoreError error) {
    if (error != StoreError::kIo)
        return error;
    int failure = FirstSqlFailure();
    switch (failure & 0xFF) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return StoreError::kLocked;
        case SQLITE_FULL:
            return StoreError::kFull;
        case SQLITE_READONLY:
            return StoreError::kReadOnly;
        default:
            // The shared-memory index grows by writing to its file: that fails on a full disk.
            return failure == SQLITE_IOERR_SHMSIZE ? StoreError::kFull : error;
    }
}

std::shared_ptr<DbVolume> DbVolume::Open(const fs::path& file, bool mayCreate, bool exclusive,
                                         StoreError& error) {
    std::error_code ec;
    bool exists = fs::exists(file, ec);
    if (!exists && !mayCreate) {
        error = StoreError::kNotFound;
        return nullptr;
    }
    if (exists) {
        auto size = fs::file_size(file, ec);
        if (ec || !fs::is_regular_file(file, ec) ||
            (size > 0 && !LooksLikeWholeDatabase(file, size))) {
            error = StoreError::kInvalidFile;
            return nullptr;
        }
    }
    ClearSqlFailure();
    std::shared_ptr<DbVolume> v(new DbVolume());
    v->file_ = file;
    v->exclusive_ = exclusive;
    if (v->sql_.Open(file, !exists) != SQLITE_OK) {
        error = exists ? StoreError::kInvalidFile : Refined(StoreError::kIo);
        return nullptr;
    }
    if (!v->Initialise(error)) {
        // A file that another program holds locked, or on a full disk, is valid, just not
        // usable now.
        StoreError why = Refined(StoreError::kIo);
        if (error == StoreError::kInvalidFile &&
            (why == StoreError::kLocked || why == StoreError::kFull))
            error = why;
        return nullptr;
    }
    return v;
}

DbVolume::~DbVolume() {
    dbs_.clear();
    begin_ = {};
    commit_ = {};
    rollback_ = {};
    dataVersion_ = {};
    reserve_ = {};
    sql_.Close();
}

bool DbVolume::Initialise(StoreError& error) {
    error = StoreError::kInvalidFile;
    if (exclusive_ && !sql_.Exec("PRAGMA locking_mode=EXCLUSIVE"))
        return false;
    // Reading the schema is the first access: a file that is not a database fails here.
    SqliteStmt tables = sql_.Prepare("SELECT name FROM sqlite_master WHERE type='table'");
    if (!tables.valid())
        return false;
    std::vector<std::string> names;
    int rc;
    while ((rc = tables.Step()) == SQLITE_ROW)
        names.emplace_back(tables.ColumnText(0));
    if ((rc & 0xFF) == SQLITE_BUSY || (rc & 0xFF) == SQLITE_LOCKED) {
        error = StoreError::kLocked;  // held by another program: valid, just not available now
        return false;
    }
    if (rc != SQLITE_DONE)
        return false;
    tables = {};
    bool fresh = names.empty();
    if (!fresh && std::find(names.begin(), names.end(), "aerix_volume") == names.end())
        return false;  // somebody else's database: never ours to change

    // WAL: each write is one transaction, and a crash of the program loses none of them. Commits
    // are not flushed to the disk one by one (checkpoints are); a larger cache keeps the sort
    // indexes of a big navigation volume in memory while it is written.
    std::string setup = exclusive_ ? "PRAGMA locking_mode=EXCLUSIVE;" : "";
    setup +=
        "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL; PRAGMA cache_size=-32768;"
        "PRAGMA wal_autocheckpoint=16384;";
    if (!sql_.Exec(setup))
        return false;
    // Reading a large navigation volume in name order visits its pages out of file order: map
    // the file rather than read it a page at a time.
    sql_.Exec("PRAGMA mmap_size=268435456");
    if (fresh) {
        bool made = sql_.Exec(
            "BEGIN IMMEDIATE;"
            "CREATE TABLE IF NOT EXISTS aerix_volume(key TEXT PRIMARY KEY, value INTEGER NOT NULL)"
            " WITHOUT ROWID;"
            "INSERT OR IGNORE INTO aerix_volume VALUES('format', 1), ('oid_reserved', 1);"
            "CREATE TABLE IF NOT EXISTS databases(oid INTEGER PRIMARY KEY,"
            " name TEXT NOT NULL UNIQUE COLLATE NOCASE, type INTEGER NOT NULL,"
            " flags INTEGER NOT NULL, sorts TEXT NOT NULL);"
            "COMMIT;");
        if (!made) {
            error = Refined(StoreError::kIo);
            sql_.Exec("ROLLBACK");
            return false;
        }
    }
    SqliteStmt format = sql_.Prepare("SELECT value FROM aerix_volume WHERE key='format'");
    if (format.Step() != SQLITE_ROW || format.ColumnInt(0) != kFormatVersion)
        return false;
    format = {};

    begin_ = sql_.Prepare("BEGIN IMMEDIATE");
    commit_ = sql_.Prepare("COMMIT");
    rollback_ = sql_.Prepare("ROLLBACK");
    dataVersion_ = sql_.Prepare("PRAGMA data_version");
    reserve_ = sql_.Prepare(
        "UPDATE aerix_volume SET value = value + 1024 WHERE key='oid_reserved' RETURNING value");
    if (!begin_.valid() || !commit_.valid() || !rollback_.valid() || !dataVersion_.valid() ||
        !reserve_.valid() || !LoadCatalog())
        return false;
    error = StoreError::kNone;
    return true;
}

bool DbVolume::LoadCatalog() {
    dbs_.clear();
    SqliteStmt q = sql_.Prepare("SELECT oid, name, type, flags, sorts FROM databases ORDER BY oid");
    if (!q.valid())
        return false;
    int rc;
    while ((rc = q.Step()) == SQLITE_ROW) {
        auto meta = std::make_unique<DbMeta>();
        meta->info.oid = static_cast<CeOid>(q.ColumnInt(0));
        meta->info.name = Utf8ToUtf16(q.ColumnText(1));
        meta->info.type = static_cast<std::uint32_t>(q.ColumnInt(2));
        meta->info.flags = static_cast<std::uint16_t>(q.ColumnInt(3));
        meta->info.sorts = ParseSorts(q.ColumnText(4));
        meta->table = Prefixed("r", meta->info.oid);
        dbs_[meta->info.oid] = std::move(meta);
    }
    if (rc != SQLITE_DONE)
        return false;
    if (dataVersion_.Step() == SQLITE_ROW)
        lastDataVersion_ = dataVersion_.ColumnInt(0);
    dataVersion_.Reset();
    return true;
}

// Another program (aerix-tool beside the running program) may have changed the file.
void DbVolume::Refresh() {
    if (dataVersion_.Step() == SQLITE_ROW) {
        std::int64_t version = dataVersion_.ColumnInt(0);
        dataVersion_.Reset();
        if (version != lastDataVersion_) {
            ResetCursors();
            LoadCatalog();
            ++dataGeneration_;
            ++orderGeneration_;
        }
        return;
    }
    dataVersion_.Reset();
}

// Object ids are reserved in blocks inside the write transaction, so two programs writing the
// same volume never hand out the same id.
CeOid DbVolume::AllocateOid() {
    if (nextOid_ >= reservedEnd_) {
        if (reserve_.Step() != SQLITE_ROW) {
            reserve_.Reset();
            return 0;
        }
        reservedEnd_ = static_cast<std::uint64_t>(reserve_.ColumnInt(0));
        reserve_.Reset();
        nextOid_ = reservedEnd_ - kOidBlock;
    }
    if (nextOid_ == 0 || nextOid_ > 0xFFFFFFFFu)
        return 0;
    return static_cast<CeOid>(nextOid_++);
}

void DbVolume::ResetCursors() {
    for (DbCursor* c : cursors_)
        c->ResetStream();
}

void DbVolume::Attach(DbCursor* cursor) {
    cursors_.push_back(cursor);
}

void DbVolume::Detach(DbCursor* cursor) {
    std::erase(cursors_, cursor);
}

DbMeta* DbVolume::Find(CeOid oid) {
    auto it = dbs_.find(oid);
    return it == dbs_.end() ? nullptr : it->second.get();
}

DbMeta* DbVolume::Find(std::u16string_view name) {
    auto fold = [](char16_t c) { return (c >= u'a' && c <= u'z') ? char16_t(c - 32) : c; };
    for (auto& [oid, meta] : dbs_) {
        const std::u16string& n = meta->info.name;
        if (n.size() == name.size() &&
            std::equal(n.begin(), n.end(), name.begin(),
                       [&](char16_t a, char16_t b) { return fold(a) == fold(b); }))
            return meta.get();
    }
    return nullptr;
}

std::optional<std::uint32_t> DbVolume::RecordCount(DbMeta& db) {
    if (!db.count.valid())
        db.count = sql_.Prepare("SELECT count(*) FROM " + db.table);
    if (db.count.Step() != SQLITE_ROW) {
        db.count.Reset();
        return std::nullopt;
    }
    auto n = static_cast<std::uint32_t>(db.count.ColumnInt(0));
    db.count.Reset();
    return n;
}

std::optional<DatabaseInfo> DbVolume::Info(CeOid oid) {
    Refresh();
    DbMeta* db = Find(oid);
    if (!db)
        return std::nullopt;
    DatabaseInfo info = db->info;
    info.recordCount = RecordCount(*db).value_or(0);
    return info;
}

std::vector<DatabaseInfo> DbVolume::Enumerate(std::uint32_t type) {
    Refresh();
    std::vector<DatabaseInfo> out;
    for (auto& [oid, meta] : dbs_) {
        if (type != 0 && meta->info.type != type)
            continue;
        DatabaseInfo info = meta->info;
        info.recordCount = RecordCount(*meta).value_or(0);
        out.push_back(std::move(info));
    }
    return out;
}

bool DbVolume::BeginBatch() {
    ResetCursors();
    if (batchDepth_ == 0) {
        if (!begin_.Run())
            return false;
        batchFailed_ = false;
    }
    ++batchDepth_;
    return true;
}

bool DbVolume::EndBatch(bool commit) {
    if (batchDepth_ == 0)
        return false;
    if (!commit)
        batchFailed_ = true;
    if (--batchDepth_ > 0)
        return !batchFailed_;
    if (!batchFailed_ && commit_.Run())
        return true;
    rollback_.Run();
    batchFailed_ = false;
    // What the dropped writes changed in memory is read again from the file.
    ResetCursors();
    LoadCatalog();
    nextOid_ = reservedEnd_ = 0;
    ++dataGeneration_;
    ++orderGeneration_;
    return false;
}

std::string DbVolume::OrderClause(const DbMeta& db, int sortIndex) {
    if (sortIndex < 0)
        return " ORDER BY oid";
    const SortOrder& s = db.info.sorts[static_cast<std::size_t>(sortIndex)];
    std::string n = std::to_string(sortIndex);
    return " ORDER BY m" + n + ", k" + n + Collation(s) +
           ((s.flags & kSortDescending) ? " DESC" : "") + ", oid";
}

std::optional<std::uint64_t> DbVolume::IndexOf(DbMeta& db, int sortIndex, CeOid oid) {
    if (sortIndex < 0) {
        SqliteStmt q = sql_.Prepare("SELECT (SELECT count(*) FROM " + db.table +
                                    " WHERE oid < ?1) FROM " + db.table + " WHERE oid = ?1");
        q.BindInt(1, oid);
        if (q.Step() != SQLITE_ROW)
            return std::nullopt;
        return static_cast<std::uint64_t>(q.ColumnInt(0));
    }
    const SortOrder& s = db.info.sorts[static_cast<std::size_t>(sortIndex)];
    std::string n = std::to_string(sortIndex), m = "m" + n, k = "k" + n + Collation(s);
    SqliteStmt key =
        sql_.Prepare("SELECT " + m + ", k" + n + " FROM " + db.table + " WHERE oid = ?1");
    key.BindInt(1, oid);
    if (key.Step() != SQLITE_ROW)
        return std::nullopt;
    std::string before = (s.flags & kSortDescending) ? " > " : " < ";
    bool missing = key.ColumnType(1) == SQLITE_NULL;
    std::string where = missing ? m + " < ?1 OR (" + m + " = ?1 AND oid < ?3)"
                                : m + " < ?1 OR (" + m + " = ?1 AND (" + k + before + "?2 OR (" +
                                      k + " = ?2 AND oid < ?3)))";
    SqliteStmt q = sql_.Prepare("SELECT count(*) FROM " + db.table + " WHERE " + where);
    q.BindInt(1, key.ColumnInt(0));
    BindColumn(q, 2, key, 1);
    q.BindInt(3, oid);
    if (q.Step() != SQLITE_ROW)
        return std::nullopt;
    return static_cast<std::uint64_t>(q.ColumnInt(0));
}

CeOid DbVolume::FirstEqual(DbMeta& db, int sortIndex, const PropVal& value) {
    const SortOrder& s = db.info.sorts[static_cast<std::size_t>(sortIndex)];
    if (value.propId != s.propId || !TypeMatches(value))
        return 0;
    std::string n = std::to_string(sortIndex);
    SqliteStmt q = sql_.Prepare("SELECT oid FROM " + db.table + " WHERE m" + n + " = ?1 AND k" + n +
                                Collation(s) + " = ?2 ORDER BY oid LIMIT 1");
    q.BindInt(1, PresenceRank(true, s.flags));
    BindKey(q, 2, value.value);
    if (q.Step() != SQLITE_ROW)
        return 0;
    return static_cast<CeOid>(q.ColumnInt(0));
}

}  // namespace aerix::platform
