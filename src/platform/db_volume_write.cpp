#include <sqlite3.h>

#include "platform/db_volume.hpp"
#include "platform/db_volume_detail.hpp"
#include "platform/prop_codec.hpp"
#include "platform/text.hpp"

// Creating and deleting databases, writing and deleting records: each one transaction.
namespace aerix::platform {

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

}  // namespace aerix::platform
