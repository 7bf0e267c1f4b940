// The one RAII wrapper over the SQLite C API: a connection and its prepared statements. Errors
// come back as result codes, never as exceptions.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace aerix::platform {

class SqliteStmt {
  public:
    SqliteStmt() = default;
    SqliteStmt(sqlite3* db, std::string_view sql);
    ~SqliteStmt();
    SqliteStmt(SqliteStmt&& other) noexcept;
    SqliteStmt& operator=(SqliteStmt&& other) noexcept;
    SqliteStmt(const SqliteStmt&) = delete;
    SqliteStmt& operator=(const SqliteStmt&) = delete;

    bool valid() const { return stmt_ != nullptr; }

    // Parameters count from 1, as in SQL.
    void BindNull(int i);
    void BindInt(int i, std::int64_t v);
    void BindDouble(int i, double v);
    void BindText(int i, std::string_view v);
    void BindBlob(int i, std::span<const std::uint8_t> v);

    // SQLITE_ROW, SQLITE_DONE or an error code.
    int Step();
    // Ready to run again, bindings kept.
    void Reset();
    // Runs a statement that returns no rows; true on success. Resets afterwards.
    bool Run();

    // Columns count from 0.
    int ColumnType(int i) const;
    std::int64_t ColumnInt(int i) const;
    double ColumnDouble(int i) const;
    std::string_view ColumnText(int i) const;
    std::span<const std::uint8_t> ColumnBlob(int i) const;

  private:
    sqlite3_stmt* stmt_ = nullptr;
};

// How long a lock that another program holds is waited for before a call gives up with
// SQLITE_BUSY. After such a wait in vain, calls within kLockRetryAfter give up at once, so that a
// command of many steps waits once rather than at every step.
inline constexpr int kLockWaitMs = 3000;
inline constexpr int kLockRetryAfterMs = 10000;

// The extended result code (SQLITE_BUSY, SQLITE_FULL, ...) of the first call on this thread that
// failed since ClearSqlFailure; SQLITE_OK when none did.
int FirstSqlFailure();
void ClearSqlFailure();

class SqliteDb {
  public:
    SqliteDb() = default;
    ~SqliteDb();
    SqliteDb(SqliteDb&& other) noexcept;
    SqliteDb& operator=(SqliteDb&& other) noexcept;
    SqliteDb(const SqliteDb&) = delete;
    SqliteDb& operator=(const SqliteDb&) = delete;

    // Opens read-write, creating the file only when asked. Returns the SQLite result code.
    int Open(const std::filesystem::path& file, bool create);
    void Close();
    bool valid() const { return db_ != nullptr; }
    sqlite3* get() const { return db_; }

    // Runs one or more statements without results; true on success.
    bool Exec(std::string_view sql);
    SqliteStmt Prepare(std::string_view sql) const { return SqliteStmt(db_, sql); }
    std::int64_t LastInsertRowId() const;
    std::string ErrorText() const;

  private:
    sqlite3* db_ = nullptr;
};

}  // namespace aerix::platform
