#include "platform/db_volume.hpp"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <fstream>

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

std::string SortsText(const std::vector<SortOrder>& sorts) {
    std::string text;
    for (const SortOrder& s : sorts) {
        if (!text.empty())
            text += ';';
        text += std::to_string(s.propId) + ':' + std::to_string(s.flags);
    }
    return text;
}

std::vector<SortOrder> ParseSorts(std::string_view text) {
    std::vector<SortOrder> sorts;
    while (!text.empty()) {
        auto end = text.find(';');
        std::string item(text.substr(0, end));
        auto colon = item.find(':');
        if (colon != std::string::npos) {
            sorts.push_back({static_cast<std::uint32_t>(std::stoul(item.substr(0, colon))),
                             static_cast<std::uint32_t>(std::stoul(item.substr(colon + 1)))});
        }
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    }
    return sorts;
}

// (Built up step by step: GCC 12 warns falsely about "x" + std::to_string(n) at -O3.)
std::string Prefixed(const char* prefix, std::uint64_t n) {
    std::string s(prefix);
    s += std::to_string(n);
    return s;
}

bool KnownType(std::uint16_t type) {
    switch (type) {
        case kCevtI2:
        case kCevtUi2:
        case kCevtI4:
        case kCevtUi4:
        case kCevtR8:
        case kCevtBool:
        case kCevtLpwstr:
        case kCevtBlob:
            return true;
        default:
            return false;
    }
}

void BindKey(SqliteStmt& stmt, int i, const PropValue& v) {
    std::visit(
        [&](const auto& x) {
            using T = std::decay_t<decltype(x)>;
            if constexpr (std::is_same_v<T, double>)
                stmt.BindDouble(i, x);
            else if constexpr (std::is_same_v<T, std::u16string>)
                stmt.BindText(i, Utf16ToUtf8(x));
            else if constexpr (std::is_same_v<T, std::vector<std::uint8_t>>)
                stmt.BindBlob(i, x);
            else
                stmt.BindInt(i, static_cast<std::int64_t>(x));
        },
        v);
}

// Binds column col of src (as SQLite stored it) to parameter i of dst.
void BindColumn(SqliteStmt& dst, int i, const SqliteStmt& src, int col) {
    switch (src.ColumnType(col)) {
        case SQLITE_INTEGER:
            dst.BindInt(i, src.ColumnInt(col));
            break;
        case SQLITE_FLOAT:
            dst.BindDouble(i, src.ColumnDouble(col));
            break;
        case SQLITE_TEXT:
            dst.BindText(i, src.ColumnText(col));
            break;
        case SQLITE_BLOB:
            dst.BindBlob(i, src.ColumnBlob(col));
            break;
        default:
            dst.BindNull(i);
    }
}

// Rank of presence in a sort order: records lacking the key go after all others unless the order
// asks for them first.
int PresenceRank(bool present, std::uint32_t flags) {
    bool unknownFirst = (flags & kSortUnknownFirst) != 0;
    return present == unknownFirst ? 1 : 0;
}

const char* Collation(const SortOrder& s) {
    return (s.flags & kSortCaseInsensitive) ? " COLLATE NOCASE" : "";
}

const PropVal* FindProp(std::span<const PropVal> props, std::uint32_t propId) {
    const PropVal* found = nullptr;
    for (const PropVal& p : props)
        if (p.propId == propId)
            found = &p;  // the last one wins, as in a write that names a property twice
    return found;
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

// One write transaction; rolled back unless committed. Inside a batch it joins the batch's, and
// a failure makes the batch fail: the writes before it must not be kept without it.
class Transaction {
  public:
    explicit Transaction(DbVolume& v) : v_(v), joined_(v.InBatch()) {
        // SQLite rolls a transaction back by itself after some failures (a full disk): a batch
        // that lost its transaction takes no more writes.
        open_ = joined_ ? !v_.batchFailed_ && sqlite3_get_autocommit(v_.sql_.get()) == 0
                        : v_.begin_.Run();
        if (joined_ && !open_)
            v_.batchFailed_ = true;
    }
    ~Transaction() {
        if (!open_)
            return;
        if (joined_)
            v_.batchFailed_ = true;
        else
            v_.rollback_.Run();
    }
    bool Open() const { return open_; }
    bool Commit() {
        if (!open_)
            return false;
        if (!joined_ && !v_.commit_.Run())
            return false;  // the destructor rolls back
        open_ = false;
        return true;
    }

  private:
    DbVolume& v_;
    bool joined_;
    bool open_ = false;
};

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

CeOid DbVolume::CreateDatabase(const DatabaseInfo& info, StoreError& error) {
    error = StoreError::kInvalidParameter;
    if (info.name.empty() || info.name.size() > kMaxDatabaseName ||
        info.name.find(u'\0') != std::u16string::npos || info.sorts.size() > kMaxSortOrders)
        return 0;
    for (const SortOrder& s : info.sorts)
        if (!KnownType(PropType(s.propId)) ||
            (s.flags & ~(kSortDescending | kSortCaseInsensitive | kSortUnknownFirst)) != 0)
            return 0;
    Refresh();
    if (Find(info.name)) {
        error = StoreError::kAlreadyExists;
        return 0;
    }
    error = StoreError::kIo;
    ResetCursors();
    Transaction tx(*this);
    if (!tx.Open())
        return 0;
    CeOid oid = AllocateOid();
    if (oid == 0)
        return 0;
    SqliteStmt add = sql_.Prepare("INSERT INTO databases VALUES(?1, ?2, ?3, ?4, ?5)");
    add.BindInt(1, oid);
    add.BindText(2, Utf16ToUtf8(info.name));
    add.BindInt(3, info.type);
    add.BindInt(4, info.flags);
    add.BindText(5, SortsText(info.sorts));
    int added = add.Step();
    if (added != SQLITE_DONE) {
        // The name check above and the UNIQUE constraint agree; this catches a race with another
        // program creating the same name. Anything else (a read-only or full file) is refined.
        if ((added & 0xFF) == SQLITE_CONSTRAINT)
            error = StoreError::kAlreadyExists;
        return 0;
    }
    add = {};
    std::string table = Prefixed("r", oid);
    std::string ddl = "CREATE TABLE " + table + "(oid INTEGER PRIMARY KEY, props BLOB NOT NULL";
    for (std::size_t i = 0; i < info.sorts.size(); ++i)
        ddl += ", m" + std::to_string(i) + " INTEGER NOT NULL, k" + std::to_string(i);
    ddl += ");";
    for (std::size_t i = 0; i < info.sorts.size(); ++i) {
        const SortOrder& s = info.sorts[i];
        std::string n = std::to_string(i);
        ddl += "CREATE INDEX " + table + "_s" + n + " ON " + table + "(m" + n + ", k" + n +
               Collation(s) + ((s.flags & kSortDescending) ? " DESC" : "") + ");";
    }
    if (!sql_.Exec(ddl) || !tx.Commit())
        return 0;
    auto meta = std::make_unique<DbMeta>();
    meta->info = info;
    meta->info.oid = oid;
    meta->info.recordCount = 0;
    meta->table = table;
    dbs_[oid] = std::move(meta);
    ++dataGeneration_;
    error = StoreError::kNone;
    return oid;
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

bool DbVolume::DeleteDatabase(CeOid oid, StoreError& error) {
    Refresh();
    DbMeta* db = Find(oid);
    if (!db) {
        error = StoreError::kNotFound;
        return false;
    }
    error = StoreError::kIo;
    ResetCursors();
    std::string table = db->table;
    dbs_.erase(oid);  // its statements go first, or the table could not be dropped
    Transaction tx(*this);
    SqliteStmt del = sql_.Prepare("DELETE FROM databases WHERE oid = ?1");
    del.BindInt(1, oid);
    if (!tx.Open() || !del.Run() || !sql_.Exec("DROP TABLE IF EXISTS " + table) || !tx.Commit()) {
        LoadCatalog();
        return false;
    }
    ++dataGeneration_;
    ++orderGeneration_;
    error = StoreError::kNone;
    return true;
}

CeOid DbVolume::WriteRecord(CeOid dbOid, CeOid oid, std::span<const PropVal> props,
                            StoreError& error) {
    DbMeta* db = Find(dbOid);
    if (!db) {
        error = StoreError::kNotFound;
        return 0;
    }
    for (const PropVal& p : props)
        if (!TypeMatches(p)) {
            error = StoreError::kInvalidParameter;
            return 0;
        }
    error = StoreError::kIo;
    ResetCursors();
    const auto& sorts = db->info.sorts;
    thread_local std::vector<std::uint8_t> blob;
    thread_local std::vector<PropVal> merged;
    // A new record whose id is already reserved is one INSERT, a transaction of its own; an
    // overwrite reads and writes the record in one transaction.
    std::optional<Transaction> tx;
    if (InBatch() || oid != 0 || nextOid_ >= reservedEnd_) {
        tx.emplace(*this);
        if (!tx->Open())
            return 0;
    }

    bool moved = true;
    std::span<const PropVal> record = props;
    if (oid != 0) {
        if (!db->select.valid())
            db->select = sql_.Prepare("SELECT props FROM " + db->table + " WHERE oid = ?1");
        db->select.BindInt(1, oid);
        if (db->select.Step() != SQLITE_ROW) {
            db->select.Reset();
            error = StoreError::kNotFound;
            return 0;
        }
        bool ok = DecodeProps(db->select.ColumnBlob(0), merged);
        db->select.Reset();
        if (!ok)
            return 0;
        moved = false;
        for (const PropVal& p : props) {
            auto it = std::find_if(merged.begin(), merged.end(),
                                   [&](const PropVal& m) { return m.propId == p.propId; });
            bool isKey = std::any_of(sorts.begin(), sorts.end(),
                                     [&](const SortOrder& s) { return s.propId == p.propId; });
            if (it == merged.end()) {
                merged.push_back(p);
                moved = moved || isKey;
            } else if (!(it->value == p.value)) {
                it->value = p.value;
                moved = moved || isKey;
            }
        }
        record = merged;
    } else {
        oid = AllocateOid();
        if (oid == 0)
            return 0;
    }
    EncodeProps(record, blob);

    SqliteStmt& stmt = oid != 0 && !moved ? db->update : db->insert;
    if (!db->insert.valid()) {
        std::string cols = "oid, props", params = "?1, ?2";
        std::string sets = "props = ?2";
        for (std::size_t i = 0; i < sorts.size(); ++i) {
            std::string n = std::to_string(i);
            std::string m = Prefixed("?", 3 + 2 * i), k = Prefixed("?", 4 + 2 * i);
            cols += ", m" + n + ", k" + n;
            params += ", " + m + ", " + k;
            sets += ", m" + n + " = " + m + ", k" + n + " = " + k;
        }
        db->insert = sql_.Prepare("INSERT OR REPLACE INTO " + db->table + "(" + cols + ") VALUES(" +
                                  params + ")");
        db->update = sql_.Prepare("UPDATE " + db->table + " SET " + sets + " WHERE oid = ?1");
    }
    stmt.BindInt(1, oid);
    stmt.BindBlob(2, blob);
    for (std::size_t i = 0; i < sorts.size(); ++i) {
        const PropVal* key = FindProp(record, sorts[i].propId);
        int at = static_cast<int>(3 + 2 * i);
        stmt.BindInt(at, PresenceRank(key != nullptr, sorts[i].flags));
        if (key)
            BindKey(stmt, at + 1, key->value);
        else
            stmt.BindNull(at + 1);
    }
    if (!stmt.Run() || (tx && !tx->Commit()))
        return 0;
    ++dataGeneration_;
    if (moved)
        ++orderGeneration_;
    error = StoreError::kNone;
    return oid;
}

bool DbVolume::DeleteRecord(CeOid dbOid, CeOid oid, StoreError& error) {
    DbMeta* db = Find(dbOid);
    if (!db) {
        error = StoreError::kNotFound;
        return false;
    }
    ResetCursors();
    error = StoreError::kIo;
    Transaction tx(*this);
    if (!tx.Open())
        return false;
    if (!db->remove.valid())
        db->remove = sql_.Prepare("DELETE FROM " + db->table + " WHERE oid = ?1");
    db->remove.BindInt(1, oid);
    if (!db->remove.Run())
        return false;
    bool changed = sqlite3_changes(sql_.get()) != 0;
    if (!tx.Commit())
        return false;
    if (!changed) {
        error = StoreError::kNotFound;
        return false;
    }
    ++dataGeneration_;
    ++orderGeneration_;
    error = StoreError::kNone;
    return true;
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
