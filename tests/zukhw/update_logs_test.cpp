// Compressed and rotated logs of package managers, the logs of yum and zypp, and dnf's database.
#include "scanners/zukhw/update_logs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include <filesystem>
#include <fstream>

#include "scanners/shared/affix.h"
#include "scanners/zukhw/gzip.h"
#include "tests/support/files.h"
#include "tests/support/sqlite_database.h"
#include "tests/zukhw/test_machine.h"

namespace {

using testing::ElementsAre;
using testing::FieldsAre;

std::string gzipped(const std::string& text) {
    std::string bytes(text.size() + 1000, '\0');
    z_stream stream = {};
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    std::string from = text;
    stream.next_in = reinterpret_cast<Bytef*>(from.data());
    stream.avail_in = static_cast<uInt>(from.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = static_cast<uInt>(bytes.size());
    EXPECT_EQ(Z_STREAM_END, deflate(&stream, Z_FINISH));
    bytes.resize(stream.total_out);
    deflateEnd(&stream);
    return bytes;
}

TEST(Gzip, GivesBackWhatWasCompressed) {
    const std::string text(300000, 'x');
    std::string back;
    EXPECT_TRUE(gunzip(gzipped(text) + gzipped("more"), 1 << 20, &back));
    EXPECT_EQ(text + "more", back);
}

TEST(Gzip, GivesWhatComesBeforeTheDamage) {
    const std::string whole = gzipped("some text that is long enough to be cut");
    for (std::size_t size = 0; size < whole.size(); ++size) {
        std::string back;
        EXPECT_FALSE(gunzip(whole.substr(0, size), 1000, &back)) << size;
        EXPECT_TRUE(startsWith("some text that is long enough to be cut", back)) << back;
    }
}

TEST(Gzip, StopsAtItsLimit) {
    for (const std::size_t limit : {1000U, 100000U}) {
        std::string back;
        EXPECT_FALSE(gunzip(gzipped(std::string(1000000, '\0')), limit, &back));
        EXPECT_EQ(limit, back.size());
    }
}

std::string aptUpgrade(const std::string& date, const std::string& name) {
    return "\nStart-Date: " + date + "  10:11:12\nUpgrade: " + name + ":amd64 (1, 2)\n";
}

std::vector<std::string> namesOf(TestMachine& machine) {
    std::vector<std::string> names;
    for (const Fields& patch : collectInstances(*machine, "InstalledPatches"))
        names.push_back(patch.at("Name"));
    return names;
}

void put(const TestMachine& machine, const std::string& path, const std::string& bytes) {
    const std::filesystem::path file = machine.root() + '/' + path;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
}

TEST(InstalledPatches, ComeFromRotatedLogsToo) {
    TestMachine machine("var/log/dpkg.log: 2026-05-20 10:11:12 upgrade unread:amd64 1 2\n");
    put(machine, "var/log/apt/history.log", aptUpgrade("2026-05-20", "d"));
    put(machine, "var/log/apt/history.log.1", aptUpgrade("2026-04-20", "c"));
    put(machine, "var/log/apt/history.log.2.gz", gzipped(aptUpgrade("2026-03-20", "b")));
    put(machine, "var/log/apt/history.log.10.gz", gzipped(aptUpgrade("2025-03-20", "a")));
    put(machine, "var/log/apt/history.log.3.xz", "not read");
    EXPECT_EQ((std::vector<std::string>{"a", "b", "c", "d"}), namesOf(machine));
    EXPECT_EQ(0U, machine->sources().malformedCount());
}

TEST(InstalledPatches, CountACompressedLogThatIsCut) {
    TestMachine machine("var/log/x: 1\n");
    const std::string log = gzipped(aptUpgrade("2026-03-20", "b"));
    put(machine, "var/log/apt/history.log.1.gz", log.substr(0, log.size() - 1));
    EXPECT_EQ((std::vector<std::string>{"b"}), namesOf(machine));
    EXPECT_EQ((std::vector<std::string>{"/var/log/apt/history.log.1.gz@0"}),
              machine->sources().malformedItems());
}

TEST(YumLog, HasNoDates) {
    EXPECT_THAT(parseYumLog("May 20 10:11:12 Updated: 32:bind-libs-9.9.4-72.el7.x86_64\n"
                            "May 20 10:11:13 Installed: new-1-1.noarch\n"
                            "May 20 10:11:13 Updated: nonsense\n"),
                ElementsAre(FieldsAre("bind-libs", "x86_64", "", "32:9.9.4-72.el7", "", "")));
}

TEST(ZyppHistory, TellsUpdatesOfWhatItSawInstalled) {
    EXPECT_THAT(parseZyppHistory("# a comment|install|x|1|noarch|\n"
                                 "2026-05-01 10:11:12|install|bash|5.1-2|x86_64||repo|sum|\n"
                                 "2026-05-20 10:11:12|install|bash|5.2-1|x86_64|ada@host|repo|sum|\n"
                                 "2026-05-20 10:11:13|install|bash|5.2-1|i586|ada@host|repo|sum|\n"
                                 "2026-05-21 10:11:12|remove |bash|5.2-1|x86_64|root@host|\n"
                                 "2026-05-22 10:11:12|install|bash|5.3-1|x86_64|root@host|repo|sum|\n"
                                 "2026-05-22 10:11:12|install\n"),
                ElementsAre(FieldsAre("bash", "x86_64", "5.1-2", "5.2-1", "2026-05-20", "ada")));
}

const std::string kDnfTables =
    "CREATE TABLE trans(id INTEGER PRIMARY KEY, dt_begin INTEGER, dt_end INTEGER, user_id INTEGER);"
    "CREATE TABLE trans_item(id INTEGER PRIMARY KEY, trans_id INTEGER, item_id INTEGER, action INTEGER);"
    "CREATE TABLE rpm(item_id INTEGER UNIQUE, name TEXT, epoch INTEGER, version TEXT, release TEXT, arch "
    "TEXT);";

TEST(InstalledPatches, ComeFromTheDatabaseOfDnf) {
    TestMachine machine(
        "etc/passwd: ada:x:1000:100::/home/ada:/bin/sh\n"
        "var/lib/dnf/x: 1\n"
        "var/log/dnf.rpm.log: 2026-05-20T10:11:12+0000 SUBDEBUG Upgrade: unread-1-1.noarch\n");
    makeDatabase(
        machine.root() + "/var/lib/dnf/history.sqlite",
        kDnfTables +
            "INSERT INTO trans VALUES(1, 1779271800, 1779271872, 1000), (2, 1, 1779371872, 4294967295);"
            "INSERT INTO rpm VALUES(1,'bash',0,'5.1','1.fc34','x86_64'),(2,'bash',0,'5.2','1.fc34','x86_64'),"
            "(3,'new',0,'1','1','noarch'),(4,'bind',32,'9.2','1','x86_64');"
            "INSERT INTO trans_item VALUES(1,1,2,6),(2,1,1,7),(3,1,3,1),(4,2,4,6);");
    const std::vector<Fields> patches = collectInstances(*machine, "InstalledPatches");
    ASSERT_EQ(2U, patches.size());
    EXPECT_EQ((Fields{{"Kind", "Update"},
                      {"Name", "bash"},
                      {"Architecture", "x86_64"},
                      {"FromVersion", "5.1-1.fc34"},
                      {"ToVersion", "5.2-1.fc34"},
                      {"InstallDate", "2026-05-20"},
                      {"Requester", "ada"}}),
              patches[0]);
    EXPECT_EQ((Fields{{"Kind", "Update"},
                      {"Name", "bind"},
                      {"Architecture", "x86_64"},
                      {"ToVersion", "32:9.2-1"},
                      {"InstallDate", "2026-05-21"}}),
              patches[1]);
}

TEST(InstalledPatches, CountADatabaseThatIsNone) {
    TestMachine machine("var/lib/dnf/history.sqlite: nonsense\n");
    EXPECT_EQ(0U, collectInstances(*machine, "InstalledPatches").size());
    EXPECT_EQ(1U, machine->sources().malformedCount());
}

TEST(InstalledPatches, LeaveTheDatabaseOfDnfAsItIs) {
    TestMachine machine("var/lib/dnf/x: 1\n");
    const std::string directory = machine.root() + "/var/lib/dnf";
    makeDatabase(directory + "/history.sqlite", "PRAGMA journal_mode=WAL;" + kDnfTables);
    const std::string before = readFile(directory + "/history.sqlite");
    collectInstances(*machine, "InstalledPatches");
    EXPECT_EQ(before, readFile(directory + "/history.sqlite"));
    EXPECT_EQ(2, std::distance(std::filesystem::directory_iterator(directory), {}));
}

}  // namespace
