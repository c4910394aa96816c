#include <fcntl.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "scanners/shared/packages/rpm_blobs.h"
#include "tests/support/temporary_folder.h"
#include "tests/zuksw/judge.h"
#include "tests/zuksw/rpm_bdb_builder.h"
#include "tests/zuksw/rpm_reading.h"

namespace {

RpmReading read(const std::string& file) {
    return readBlobs(readRpmBdb, MemoryAccess(file));
}

TEST(RpmBdb, ValuesInThePageAndInChains) {
    const RpmReading reading =
        read(bdbMeta() + bdbHashPage("\1a value in the page") + bdbHashPage(bdbOffPage(3, 12)) +
             bdbOverflow(4, "begin ") + bdbOverflow(0, "middle"));
    EXPECT_EQ(reading.blobs, (std::vector<std::string>{"a value in the page", "begin middle"}));
    EXPECT_EQ(reading.problem, "");
}

TEST(RpmBdb, TheCounterIsNoPackage) {
    const RpmReading reading = read(bdbMeta() + bdbHashPage(std::string("\1\x82\0\0\0", 5)));
    EXPECT_TRUE(reading.blobs.empty());
    EXPECT_EQ(reading.problem, "");
}

struct DamagedCase {
    std::string_view what;
    std::string file;
};

TEST(RpmBdb, DamageIsTold) {
    std::string encrypted = bdbMeta();
    encrypted[24] = 1;
    std::string oddPages = bdbMeta();
    oddPages[20] = 1;
    std::string tree = bdbMeta();
    tree[25] = 9;
    std::string outside = bdbHashPage("\1a value in the page");
    outside.replace(26, 2, "\xFF\xFF");
    const DamagedCase cases[] = {
        {"nothing", ""},
        {"another mark", bdbPadded("x")},
        {"a tree", tree},
        {"encrypted", encrypted},
        {"pages of an impossible size", oddPages},
        {"an item outside of its page", bdbMeta() + outside},
        {"a chain beyond the end", bdbMeta() + bdbHashPage(bdbOffPage(9, 12))},
        {"a chain that begins nowhere", bdbMeta() + bdbHashPage(bdbOffPage(0, 12))},
        {"a chain that is too short", bdbMeta() + bdbHashPage(bdbOffPage(2, 12)) + bdbOverflow(0, "short")},
        {"a chain that is too long", bdbMeta() + bdbHashPage(bdbOffPage(2, 3)) + bdbOverflow(0, "longer")},
        {"a circle", bdbMeta() + bdbHashPage(bdbOffPage(2, 1000)) + bdbOverflow(2, "around")},
        {"a chain through other pages", bdbMeta() + bdbHashPage(bdbOffPage(1, 12))},
        {"a length beyond all limits",
         bdbMeta() + bdbHashPage(bdbOffPage(2, 0xFFFFFFFF)) + bdbOverflow(0, "x")},
    };
    for (const DamagedCase& c : cases) {
        const RpmReading reading = read(c.file);
        EXPECT_NE(reading.problem, "") << c.what;
        EXPECT_TRUE(reading.blobs.empty()) << c.what;
    }
}

std::string hex(const std::string& bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const char c : bytes) {
        text += {kDigits[static_cast<unsigned char>(c) >> 4U], kDigits[static_cast<unsigned char>(c) & 15U]};
    }
    return text;
}

// Berkeley DB's own loader makes the file, in both byte orders.
TEST(RpmBdb, ReadsWhatBerkeleyDbWrote) {
    if (!isInstalled("db5.3_load")) GTEST_SKIP() << "db5.3_load is not installed";
    std::vector<std::string> blobs;
    std::string pairs;
    for (std::size_t i = 0; i < 40; ++i) {
        blobs.push_back(std::string(20 + i * i * 10, static_cast<char>('A' + i)));
        pairs.append(" ")
            .append(hex(littleEndian(i + 1, 4)))
            .append("\n ")
            .append(hex(blobs.back()))
            .append("\n");
    }
    for (const std::string order : {"1234", "4321"}) {
        const TemporaryFolder folder;
        std::string text = "VERSION=3\nformat=bytevalue\ntype=hash\ndb_pagesize=4096\n";
        text.append("db_lorder=").append(order).append("\nHEADER=END\n").append(pairs).append("DATA=END\n");
        const std::string dump = folder.file("dump", text);
        const std::string path = folder.path() + "/Packages";
        ASSERT_EQ(ask({"db5.3_load", "-f", dump, path}).status, 0);
        std::vector<std::string> found;
        const FileAccess file{FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC))};
        EXPECT_EQ(readRpmBdb(file, [&](std::string_view blob) { found.emplace_back(blob); }), "");
        std::sort(found.begin(), found.end());
        EXPECT_EQ(found, blobs) << order;
    }
}

}  // namespace
