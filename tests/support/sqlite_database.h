#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

// Makes an SQLite database by its statements.
inline void makeDatabase(const std::string& path, const std::string& statements) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, statements.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database);
    sqlite3_close(database);
}
