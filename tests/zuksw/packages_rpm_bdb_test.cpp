#include <fcntl.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "scanners/shared/packages/rpm_blobs.h"
#include "tests/support/temporary_folder.h"
#include "tests/zuksw/judge.h"
#include "tests/zuksw/rpm_builder.h"

namespace {

constexpr std::size_t kPage = 512;

std::string padded(std::string page) {
    page.resize(kPage, '\0');
    return page;
}

std::string meta() {
    std::string bytes =
        std::string(12, '\0') + littleEndian(0x061561, 4) + littleEndian(9, 4) + littleEndian(kPage, 4);
    bytes += std::string(1, '\0') + '\x08';
    return padded(bytes);
}

std::string pageHead(std::uint64_t next, std::uint64_t entries, std::uint64_t offset, char type) {
    return std::string(16, '\0') + littleEndian(next, 4) + littleEndian(entries, 2) +
           littleEndian(offset, 2) + '\0' + type;
}

// A page with one pair: a key of four bytes and `item`.
std::string hashPage(const std::string& item) {
    const std::size_t key = kPage - 5;
    const std::size_t value = key - item.size();
    std::string page = pageHead(0, 2, value, '\x0D') + littleEndian(key, 2) + littleEndian(value, 2);
    page.resize(value, '\0');
    return page + item + '\1' + "key1";
}

std::string offPage(std::uint64_t first, std::uint64_t length) {
    return std::string("\3\0\0\0", 4) + littleEndian(first, 4) + littleEndian(length, 4);
}

std::string overflow(std::uint64_t next, const std::string& data) {
    return padded(pageHead(next, 1, data.size(), '\7') + data);
}

struct Reading {
    std::vector<std::string> blobs;
    std::string problem;
};

Reading read(const std::string& file) {
    Reading reading;
    reading.problem =
        readRpmBdb(MemoryAccess(file), [&](std::string_view blob) { reading.blobs.emplace_back(blob); });
    return reading;
}

TEST(RpmBdb, ValuesInThePageAndInChains) {
    const Reading reading = read(meta() + hashPage("\1a value in the page") + hashPage(offPage(3, 12)) +
                                 overflow(4, "begin ") + overflow(0, "middle"));
    EXPECT_EQ(reading.blobs, (std::vector<std::string>{"a value in the page", "begin middle"}));
    EXPECT_EQ(reading.problem, "");
}

TEST(RpmBdb, TheCounterIsNoPackage) {
    const Reading reading = read(meta() + hashPage(std::string("\1\x82\0\0\0", 5)));
    EXPECT_TRUE(reading.blobs.empty());
    EXPECT_EQ(reading.problem, "");
}

struct DamagedCase {
    std::string_view what;
    std::string file;
};

TEST(RpmBdb, DamageIsTold) {
    std::string encrypted = meta();
    encrypted[24] = 1;
    std::string oddPages = meta();
    oddPages[20] = 1;
    std::string tree = meta();
    tree[25] = 9;
    std::string outside = hashPage("\1a value in the page");
    outside.replace(26, 2, "\xFF\xFF");
    const DamagedCase cases[] = {
        {"nothing", ""},
        {"another mark", padded("x")},
        {"a tree", tree},
        {"encrypted", encrypted},
        {"pages of an impossible size", oddPages},
        {"an item outside of its page", meta() + outside},
        {"a chain beyond the end", meta() + hashPage(offPage(9, 12))},
        {"a chain that begins nowhere", meta() + hashPage(offPage(0, 12))},
        {"a chain that is too short", meta() + hashPage(offPage(2, 12)) + overflow(0, "short")},
        {"a chain that is too long", meta() + hashPage(offPage(2, 3)) + overflow(0, "longer")},
        {"a circle", meta() + hashPage(offPage(2, 1000)) + overflow(2, "around")},
        {"a chain through other pages", meta() + hashPage(offPage(1, 12))},
        {"a length beyond all limits", meta() + hashPage(offPage(2, 0xFFFFFFFF)) + overflow(0, "x")},
    };
    for (const DamagedCase& c : cases) {
        const Reading reading = read(c.file);
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
