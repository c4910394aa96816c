#include "scanners/shared/sqlite_file.h"

#include <sqlite3.h>

#include <memory>

namespace {

struct CloseDatabase {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
};
using Database = std::unique_ptr<sqlite3, CloseDatabase>;

struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

constexpr int kMaxBlob = 64 << 20;
constexpr int kStepsBetweenChecks = 100000;
constexpr int kMaxChecks = 1000;  // reading 100,000 packages takes a few of them

// In a URI the path must not contain what URIs give a meaning to.
std::string uriOf(const std::string& path) {
    std::string uri = "file:";
    for (const char c : path) {
        if (c == '%' || c == '?' || c == '#') {
            constexpr std::string_view kDigits = "0123456789abcdef";
            const auto byte = static_cast<unsigned char>(c);
            uri += {'%', kDigits[byte >> 4U], kDigits[byte & 15U]};
        } else {
            uri += c;
        }
    }
    return uri + "?mode=ro&immutable=1";
}

// A made database can hide programs in its schema (views, generated columns): only plain columns may be read.
int allowReadingOnly(void*, int action, const char*, const char*, const char*, const char*) {
    return action == SQLITE_SELECT || action == SQLITE_READ ? SQLITE_OK : SQLITE_DENY;
}

int stopWhenTooLong(void* checks) {
    return ++*static_cast<int*>(checks) > kMaxChecks ? 1 : 0;
}

std::string problemOf(sqlite3* database) {
    return database == nullptr ? "out of memory" : sqlite3_errmsg(database);
}

}  // namespace

std::string_view SqliteRow::bytes(int column) const {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement_, column));
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
    return bytes == nullptr ? std::string_view() : std::string_view(bytes, length);
}

std::optional<std::int64_t> SqliteRow::number(int column) const {
    if (sqlite3_column_type(statement_, column) != SQLITE_INTEGER) return std::nullopt;
    return sqlite3_column_int64(statement_, column);
}

std::string readSqlite(const std::string& path, const char* query, const TakeSqliteRow& take) {
    sqlite3* handle = nullptr;
    const int flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX;
    const int opened = sqlite3_open_v2(uriOf(path).c_str(), &handle, flags, nullptr);
    const Database database(handle);  // there may be one even when opening failed
    if (opened != SQLITE_OK) return problemOf(handle);
    // What a query has to put aside stays in memory, too.
    sqlite3_exec(handle, "PRAGMA temp_store=MEMORY; PRAGMA automatic_index=OFF", nullptr, nullptr, nullptr);
    int checks = 0;
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, kMaxBlob);
    sqlite3_set_authorizer(handle, allowReadingOnly, nullptr);
    sqlite3_progress_handler(handle, kStepsBetweenChecks, stopWhenTooLong, &checks);
    sqlite3_stmt* prepared = nullptr;
    const int status = sqlite3_prepare_v2(handle, query, -1, &prepared, nullptr);
    const Statement statement(prepared);
    if (status != SQLITE_OK) return problemOf(handle);
    int step = SQLITE_OK;
    while ((step = sqlite3_step(prepared)) == SQLITE_ROW) {
        if (!take(SqliteRow(prepared))) return "";
    }
    return step == SQLITE_DONE ? "" : problemOf(handle);
}
