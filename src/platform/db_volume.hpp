// One volume of property databases: a SQLite file holding a catalog of databases and, per
// database, a table of records (object id, the properties as one blob, and one presence-rank and
// key column per declared sort order, each with its own index, so sorted reads walk an index).
// Every call expects the caller to hold Mutex(); the object store and its handles do that.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/prop_val.hpp"
#include "platform/sqlite.hpp"

namespace aerix::platform {

class DbCursor;

// kIo told more exactly when SQLite said why (a lock held elsewhere, a full disk).
StoreError Refined(StoreError error);

struct DbMeta {
    DatabaseInfo info;  // recordCount is not kept here
    std::string table;
    // Prepared on first use.
    SqliteStmt insert, select, update, remove, count;
};

class DbVolume {
  public:
    // Opens the volume file, creating an empty one when it is missing and mayCreate is set.
    // A file that is not a valid volume is left untouched and gives nullptr (error kInvalidFile).
    // An exclusive volume is held by this program alone until it is closed.
    static std::shared_ptr<DbVolume> Open(const std::filesystem::path& file, bool mayCreate,
                                          bool exclusive, StoreError& error);
    ~DbVolume();

    std::mutex& Mutex() { return mutex_; }
    const std::filesystem::path& File() const { return file_; }

    CeOid CreateDatabase(const DatabaseInfo& info, StoreError& error);
    // Looks a database up by id or by name (names compare without regard to ASCII case).
    DbMeta* Find(CeOid oid);
    DbMeta* Find(std::u16string_view name);
    std::optional<DatabaseInfo> Info(CeOid oid);
    std::vector<DatabaseInfo> Enumerate(std::uint32_t type);
    bool DeleteDatabase(CeOid oid, StoreError& error);
    std::optional<std::uint32_t> RecordCount(DbMeta& db);
    // Reloads the catalog when another program has changed the file since the last look.
    void Refresh();

    // oid 0 adds a record; an existing oid has the given properties replaced and keeps the rest.
    CeOid WriteRecord(CeOid db, CeOid oid, std::span<const PropVal> props, StoreError& error);
    bool DeleteRecord(CeOid db, CeOid oid, StoreError& error);
    // Many writes as one transaction: writes until EndBatch join it, and EndBatch commits them
    // (or, with commit false or on failure, drops them all). Batches nest: an inner one joins
    // the outer, and only the outermost EndBatch commits; an inner one ended with commit false,
    // or a write that fails inside, makes the whole batch fail.
    bool BeginBatch();
    bool EndBatch(bool commit);
    bool InBatch() const { return batchDepth_ > 0; }

    // For cursors.
    SqliteDb& Sql() { return sql_; }
    std::uint64_t DataGeneration() const { return dataGeneration_; }
    std::uint64_t OrderGeneration() const { return orderGeneration_; }
    void Attach(DbCursor* cursor);
    void Detach(DbCursor* cursor);
    // " ORDER BY ..." for the sort order at sortIndex (-1: by object id).
    static std::string OrderClause(const DbMeta& db, int sortIndex);
    // The position of a record in the given order, if it exists.
    std::optional<std::uint64_t> IndexOf(DbMeta& db, int sortIndex, CeOid oid);
    // The first record in sort order whose key equals value (0 when none).
    CeOid FirstEqual(DbMeta& db, int sortIndex, const PropVal& value);

  private:
    DbVolume() = default;
    bool Initialise(StoreError& error);
    bool LoadCatalog();
    CeOid AllocateOid();
    void ResetCursors();

    std::mutex mutex_;
    std::filesystem::path file_;
    bool exclusive_ = false;
    SqliteDb sql_;
    SqliteStmt begin_, commit_, rollback_, dataVersion_, reserve_;
    std::map<CeOid, std::unique_ptr<DbMeta>> dbs_;
    std::vector<DbCursor*> cursors_;
    std::int64_t lastDataVersion_ = -1;
    std::uint64_t nextOid_ = 0, reservedEnd_ = 0;
    std::uint64_t dataGeneration_ = 0;   // any write
    std::uint64_t orderGeneration_ = 0;  // a write that can move records in a sort order
    int batchDepth_ = 0;
    bool batchFailed_ = false;
    friend class Transaction;
};

// A position in one database of a volume, as an open handle keeps it.
class DbCursor {
  public:
    DbCursor(std::shared_ptr<DbVolume> volume, CeOid db, int sortIndex, bool autoIncrement);
    ~DbCursor();
    DbCursor(const DbCursor&) = delete;
    DbCursor& operator=(const DbCursor&) = delete;

    DbVolume& Volume() { return *volume_; }
    const std::shared_ptr<DbVolume>& VolumePtr() const { return volume_; }
    CeOid Database() const { return db_; }

    CeOid Seek(std::uint32_t mode, std::uint32_t value, std::uint32_t* index);
    CeOid SeekValue(const PropVal& value, std::uint32_t* index);
    CeOid Read(std::vector<PropVal>& props);
    // Drops the pending read (before any write on the volume).
    void ResetStream();

  private:
    void SyncPosition();
    bool FetchAt(std::uint64_t pos);
    CeOid PlaceAt(std::uint64_t pos, std::uint32_t* index);

    std::shared_ptr<DbVolume> volume_;
    CeOid db_;
    int sortIndex_;
    bool autoIncrement_;
    std::uint64_t pos_ = 0;
    CeOid anchorOid_ = 0;  // the record pos_ was taken from, to follow it when records move
    std::uint64_t anchorOffset_ = 0;
    std::uint64_t orderGeneration_;
    // The ordered walk: the statement's current row is rowPos_ while rowValid_.
    SqliteStmt stream_;
    bool rowValid_ = false;
    std::uint64_t rowPos_ = 0;
    std::uint64_t streamGeneration_ = 0;
};

}  // namespace aerix::platform
