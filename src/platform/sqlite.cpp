#include "platform/sqlite.hpp"

#include <sqlite3.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <utility>

namespace aerix::platform {

namespace {

using Clock = std::chrono::steady_clock;

// When a wait for another program's lock last ran out (a count of Clock ticks; 0: never).
std::atomic<Clock::rep> g_lockWaitRanOut{0};

thread_local int t_firstFailure = SQLITE_OK;

int Noted(int rc) {
    // The first failure is the cause; what fails after it (a commit with nothing to commit)
    // follows from it.
    if (rc != SQLITE_OK && rc != SQLITE_ROW && rc != SQLITE_DONE && t_firstFailure == SQLITE_OK)
        t_firstFailure = rc;
    return rc;
}

int WaitForLock(void*, int attempt) {
    constexpr int kStepMs = 20;
    Clock::rep ranOut = g_lockWaitRanOut.load();
    if (ranOut != 0 && Clock::now() - Clock::time_point(Clock::duration(ranOut)) <
                           std::chrono::milliseconds(kLockRetryAfterMs))
        return 0;
    if (attempt * kStepMs >= kLockWaitMs) {
        g_lockWaitRanOut = Clock::now().time_since_epoch().count();
        return 0;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(kStepMs));
    return 1;
}

}  // namespace

int FirstSqlFailure() {
    return t_firstFailure;
}

void ClearSqlFailure() {
    t_firstFailure = SQLITE_OK;
}

SqliteStmt::SqliteStmt(sqlite3* db, std::string_view sql) {
    if (db && Noted(sqlite3_prepare_v3(db, sql.data(), static_cast<int>(sql.size()),
                                       SQLITE_PREPARE_PERSISTENT, &stmt_, nullptr)) != SQLITE_OK) {
        sqlite3_finalize(stmt_);
        stmt_ = nullptr;
    }
}

SqliteStmt::~SqliteStmt() {
    sqlite3_finalize(stmt_);
}

SqliteStmt::SqliteStmt(SqliteStmt&& other) noexcept : stmt_(std::exchange(other.stmt_, nullptr)) {}

SqliteStmt& SqliteStmt::operator=(SqliteStmt&& other) noexcept {
    if (this != &other) {
        sqlite3_finalize(stmt_);
        stmt_ = std::exchange(other.stmt_, nullptr);
    }
    return *this;
}

void SqliteStmt::BindNull(int i) {
    sqlite3_bind_null(stmt_, i);
}
void SqliteStmt::BindInt(int i, std::int64_t v) {
    sqlite3_bind_int64(stmt_, i, v);
}
void SqliteStmt::BindDouble(int i, double v) {
    sqlite3_bind_double(stmt_, i, v);
}
void SqliteStmt::BindText(int i, std::string_view v) {
    sqlite3_bind_text64(stmt_, i, v.data(), v.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}
void SqliteStmt::BindBlob(int i, std::span<const std::uint8_t> v) {
    // A zero-length blob still binds as a blob, not as NULL.
    static const std::uint8_t empty = 0;
    sqlite3_bind_blob64(stmt_, i, v.empty() ? &empty : v.data(), v.size(), SQLITE_TRANSIENT);
}

int SqliteStmt::Step() {
    return stmt_ ? Noted(sqlite3_step(stmt_)) : SQLITE_MISUSE;
}

void SqliteStmt::Reset() {
    if (stmt_)
        sqlite3_reset(stmt_);
}

bool SqliteStmt::Run() {
    int rc = Step();
    Reset();
    return rc == SQLITE_DONE || rc == SQLITE_ROW;
}

int SqliteStmt::ColumnType(int i) const {
    return sqlite3_column_type(stmt_, i);
}
std::int64_t SqliteStmt::ColumnInt(int i) const {
    return sqlite3_column_int64(stmt_, i);
}
double SqliteStmt::ColumnDouble(int i) const {
    return sqlite3_column_double(stmt_, i);
}
std::string_view SqliteStmt::ColumnText(int i) const {
    auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt_, i));
    return text ? std::string_view(text, static_cast<std::size_t>(sqlite3_column_bytes(stmt_, i)))
                : std::string_view();
}
std::span<const std::uint8_t> SqliteStmt::ColumnBlob(int i) const {
    auto* data = static_cast<const std::uint8_t*>(sqlite3_column_blob(stmt_, i));
    return data ? std::span<const std::uint8_t>(
                      data, static_cast<std::size_t>(sqlite3_column_bytes(stmt_, i)))
                : std::span<const std::uint8_t>();
}

SqliteDb::~SqliteDb() {
    Close();
}

SqliteDb::SqliteDb(SqliteDb&& other) noexcept : db_(std::exchange(other.db_, nullptr)) {}

SqliteDb& SqliteDb::operator=(SqliteDb&& other) noexcept {
    if (this != &other) {
        Close();
        db_ = std::exchange(other.db_, nullptr);
    }
    return *this;
}

int SqliteDb::Open(const std::filesystem::path& file, bool create) {
    Close();
    // The store serialises access itself, so the connection needs no mutex of its own.
    int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (create ? SQLITE_OPEN_CREATE : 0);
    int rc = Noted(sqlite3_open_v2(file.c_str(), &db_, flags, nullptr));
    if (rc != SQLITE_OK) {
        Close();
        return rc;
    }
    sqlite3_extended_result_codes(db_, 1);
    sqlite3_busy_handler(db_, WaitForLock, nullptr);
    return SQLITE_OK;
}

void SqliteDb::Close() {
    if (db_) {
        sqlite3_close_v2(db_);
        db_ = nullptr;
    }
}

bool SqliteDb::Exec(std::string_view sql) {
    std::string text(sql);
    return db_ && Noted(sqlite3_exec(db_, text.c_str(), nullptr, nullptr, nullptr)) == SQLITE_OK;
}

std::int64_t SqliteDb::LastInsertRowId() const {
    return sqlite3_last_insert_rowid(db_);
}

std::string SqliteDb::ErrorText() const {
    return db_ ? sqlite3_errmsg(db_) : "no database";
}

}  // namespace aerix::platform
