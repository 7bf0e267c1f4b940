// What the volume's files share inside the platform layer: how sort orders are kept as text, how
// keys are bound, and the write transaction that joins a batch. Not for use above the platform.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <sqlite3.h>

#include "platform/db_volume.hpp"
#include "platform/sqlite.hpp"

namespace aerix::platform {

std::string SortsText(const std::vector<SortOrder>& sorts);
std::vector<SortOrder> ParseSorts(std::string_view text);
// A table or index name: the prefix and a number.
std::string Prefixed(const char* prefix, std::uint64_t n);
bool KnownType(std::uint16_t type);
void BindKey(SqliteStmt& stmt, int i, const PropValue& v);
// Binds column col of src (as SQLite stored it) to parameter i of dst.
void BindColumn(SqliteStmt& dst, int i, const SqliteStmt& src, int col);
// Rank of presence in a sort order: records lacking the key go after all others unless the order
// asks for them first.
int PresenceRank(bool present, std::uint32_t flags);
const char* Collation(const SortOrder& s);
// The last of props with that id (as a write that names a property twice keeps it), or null.
const PropVal* FindProp(std::span<const PropVal> props, std::uint32_t propId);

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

}  // namespace aerix::platform
