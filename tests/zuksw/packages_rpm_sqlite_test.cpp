#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "scanners/shared/packages/rpm_blobs.h"
#include "scanners/shared/packages/rpm_header.h"
#include "tests/support/files.h"
#include "tests/support/sqlite_database.h"
#include "tests/support/temporary_folder.h"
#include "tests/zuksw/judge.h"
#include "tests/zuksw/rpm_reading.h"

namespace {

constexpr const char* kTable = "CREATE TABLE Packages (hnum INTEGER PRIMARY KEY, blob BLOB NOT NULL);";

RpmReading read(const std::string& path) {
    return readBlobs(readRpmSqlite, path);
}

TEST(RpmSqlite, EveryBlob) {
    const TemporaryFolder folder;
    const std::string path = folder.path() + "/odd?name#1.sqlite";
    makeDatabase(path,
                 std::string(kTable) + "INSERT INTO Packages VALUES (1, x'0102'), (2, x''), (3, x'FF');");
    const RpmReading reading = read(path);
    EXPECT_EQ(reading.blobs, (std::vector<std::string>{"\x01\x02", "", "\xFF"}));
    EXPECT_EQ(reading.problem, "");
}

TEST(RpmSqlite, NothingIsWrittenBesideTheDatabase) {
    const TemporaryFolder folder;
    const std::string path = folder.path() + "/rpmdb.sqlite";
    makeDatabase(
        path, "PRAGMA journal_mode=wal;" + std::string(kTable) + "INSERT INTO Packages VALUES (1, x'01');");
    const std::string before = readFile(path);
    EXPECT_EQ(read(path).blobs.size(), 1U);
    EXPECT_EQ(readFile(path), before);
    const auto entries = std::distance(std::filesystem::directory_iterator(folder.path()), {});
    EXPECT_EQ(entries, 1);
}

struct DamagedCase {
    std::string_view what;
    std::string statements;
};

TEST(RpmSqlite, OtherDatabasesAreRefused) {
    const DamagedCase cases[] = {
        {"no such table", "CREATE TABLE Other (x);"},
        {"no such column", "CREATE TABLE Packages (x);"},
        {"a view that never ends",
         "CREATE VIEW Packages AS WITH RECURSIVE n(blob) AS (SELECT 1 UNION ALL SELECT blob + 1 FROM n) "
         "SELECT blob FROM n;"},
        {"a column that is computed",
         "CREATE TABLE Packages (n INTEGER, blob BLOB GENERATED ALWAYS AS (zeroblob(n)) VIRTUAL);"
         "INSERT INTO Packages VALUES (1000000);"},
    };
    for (const DamagedCase& c : cases) {
        const TemporaryFolder folder;
        const std::string path = folder.path() + "/rpmdb.sqlite";
        makeDatabase(path, c.statements);
        const RpmReading reading = read(path);
        EXPECT_NE(reading.problem, "") << c.what;
        EXPECT_TRUE(reading.blobs.empty()) << c.what;
    }
}

TEST(RpmSqlite, AViewThatMultipliesIsCutOff) {
    const TemporaryFolder folder;
    const std::string path = folder.path() + "/rpmdb.sqlite";
    std::string rows = "CREATE TABLE t (a); INSERT INTO t VALUES (0)";
    for (int i = 1; i < 200; ++i) rows += ", (" + std::to_string(i) + ")";
    makeDatabase(path, rows +
                           "; CREATE VIEW Packages AS SELECT p.a AS blob FROM t p, t q, t r, t s, t u WHERE "
                           "p.a + q.a + r.a + s.a + u.a < 0;");
    EXPECT_NE(read(path).problem, "");
}

TEST(RpmSqlite, WhatIsNoDatabaseIsRefused) {
    const TemporaryFolder folder;
    EXPECT_NE(
        read(folder.file("text", "this is no database at all, though it is long enough for one\n")).problem,
        "");
    EXPECT_NE(read(folder.path() + "/none").problem, "");
}

TEST(RpmSqlite, TheHeadersOfARealMachine) {
    const std::string captured = std::string(ZUK_SOURCE_DIR) + "/../shared/machines/rpmdb/";
    const std::string expected = readFile(captured + "expected-sqlite.tsv");
    if (expected.empty()) GTEST_SKIP() << "there are no captured machines beside the sources";
    const TemporaryFolder folder;
    ASSERT_EQ(ask({"tar", "-C", folder.path(), "-xf", captured + "sqlite.tar.xz"}).status, 0);
    std::vector<std::string> lines;
    const auto take = [&](std::string_view blob) {
        const std::optional<Package> p = parseRpmHeader(blob);
        ASSERT_TRUE(p);
        lines.push_back(p->name + "\t" + p->epoch + "\t" + p->upstream + "\t" + p->revision + "\t" +
                        p->architecture + "\t" + p->vendor + "\t" +
                        std::to_string(p->installTime.value_or(0)) + "\t" +
                        std::to_string(p->installedBytes.value_or(0)) + "\t" + p->summary + "\n");
    };
    EXPECT_EQ(readRpmSqlite(folder.path() + "/sqlite/var/lib/rpm/rpmdb.sqlite", take), "");
    std::sort(lines.begin(), lines.end());
    std::string all;
    for (const std::string& line : lines) all += line;
    EXPECT_EQ(all, expected);
}

}  // namespace
