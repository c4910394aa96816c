#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3_stmt;

// One row of an answer; columns count from 0. Good until the next row is asked for.
class SqliteRow {
  public:
    explicit SqliteRow(sqlite3_stmt* statement) : statement_(statement) {}

    // The bytes of a text or a blob, the digits of a number; empty where there is nothing.
    std::string_view bytes(int column) const;
    // No value where there is no integer.
    std::optional<std::int64_t> number(int column) const;

  private:
    sqlite3_stmt* statement_;
};

// False: no more rows are wanted.
using TakeSqliteRow = std::function<bool(const SqliteRow& row)>;

// Calls `take` with each row that answers the query, of a database that nobody vouches for. It is taken as it
// lies at `path`: no lock, no journal, nothing written, nothing run that its schema may hide. Returns what is
// wrong with it, empty when nothing is; rows before the damage have been delivered by then.
std::string readSqlite(const std::string& path, const char* query, const TakeSqliteRow& take);
