#include "scanners/shared/packages/rpm_header.h"

#include <gtest/gtest.h>

#include "tests/zuksw/rpm_builder.h"

namespace {

std::string fullHeader() {
    return RpmHeaderBuilder()
        .text(1000, "bash")
        .text(1001, "5.1.8")
        .text(1002, "1.el9")
        .numbers(1003, {2})
        .texts(1004, {"The shell\nin two lines", "Die Shell"}, 9)
        .numbers(1008, {1643279453})
        .numbers(1009, {1000})
        .text(1011, "A Vendor")
        .text(1014, "GPLv3+")
        .text(1015, "A Packager")
        .texts(1016, {"System Environment/Shells"}, 9)
        .text(1022, "x86_64")
        .text(1044, "bash-src-5.1.8-1.el9.src.rpm")
        .numbers(1116, {0, 1, 1, 7})
        .texts(1117, {"bash", "bashrc", "profile", "lost"})
        .texts(1118, {"/usr/bin/", "/etc/"})
        .build();
}

TEST(RpmHeader, EveryFieldOfAPackage) {
    const std::optional<Package> package = parseRpmHeader(fullHeader());
    ASSERT_TRUE(package);
    EXPECT_EQ(package->manager, "rpm");
    EXPECT_EQ(package->name, "bash");
    EXPECT_EQ(package->version, "2:5.1.8-1.el9");
    EXPECT_EQ(package->epoch, "2");
    EXPECT_EQ(package->upstream, "5.1.8");
    EXPECT_EQ(package->revision, "1.el9");
    EXPECT_EQ(package->architecture, "x86_64");
    EXPECT_EQ(package->vendor, "A Vendor");
    EXPECT_EQ(package->maintainer, "A Packager");
    EXPECT_EQ(package->summary, "The shell");
    EXPECT_EQ(package->section, "System Environment/Shells");
    EXPECT_EQ(package->source, "bash-src");
    EXPECT_EQ(package->license, "GPLv3+");
    EXPECT_EQ(package->installedBytes, 1000U);
    EXPECT_EQ(package->installTime, 1643279453);
}

TEST(RpmHeader, WithoutEpochTheVersionHasNone) {
    const std::optional<Package> package = parseRpmHeader(RpmHeaderBuilder::simple("a"));
    ASSERT_TRUE(package);
    EXPECT_EQ(package->version, "1.0-2");
    EXPECT_EQ(package->epoch, "");
}

TEST(RpmHeader, SizesThatNeedMoreThan32Bits) {
    RpmHeaderBuilder builder;
    builder.text(1000, "a").text(1001, "1").text(1002, "1").number64(5009, 5000000000);
    const std::optional<Package> package = parseRpmHeader(builder.build());
    ASSERT_TRUE(package);
    EXPECT_EQ(package->installedBytes, 5000000000U);
}

TEST(RpmHeader, PathsOfItsFiles) {
    std::vector<std::string> owned;
    forEachRpmPath(fullHeader(), [&](const std::string& path) { owned.push_back(path); });
    EXPECT_EQ(owned, (std::vector<std::string>{"/usr/bin/bash", "/etc/bashrc", "/etc/profile"}));
}

TEST(RpmHeader, KeysAreNoPackages) {
    EXPECT_TRUE(isRpmKey(*parseRpmHeader(RpmHeaderBuilder::simple("gpg-pubkey"))));
    EXPECT_FALSE(isRpmKey(*parseRpmHeader(RpmHeaderBuilder::simple("gpg"))));
}

struct BrokenCase {
    std::string_view what;
    std::string blob;
};

TEST(RpmHeader, DamagedHeadersAreNone) {
    const BrokenCase cases[] = {
        {"nothing", ""},
        {"cut in the counts", std::string(7, '\0')},
        {"no tags", std::string(8, '\0')},
        {"more tags than bytes", bigEndian32(100) + bigEndian32(0)},
        {"more data than bytes", bigEndian32(0) + bigEndian32(100)},
        {"counts beyond all limits", bigEndian32(0xFFFFFFFF) + bigEndian32(0xFFFFFFFF)},
        {"no name", RpmHeaderBuilder().text(1001, "1").text(1002, "1").build()},
        {"no version", RpmHeaderBuilder().text(1000, "a").text(1002, "1").build()},
        {"no release", RpmHeaderBuilder().text(1000, "a").text(1001, "1").build()},
        {"a number for a name",
         RpmHeaderBuilder().numbers(1000, {1}).text(1001, "1").text(1002, "1").build()},
    };
    for (const BrokenCase& c : cases) EXPECT_FALSE(parseRpmHeader(c.blob)) << c.what;
}

// The sanitizers watch that nothing is read beyond the end.
TEST(RpmHeader, ACutHeaderIsNone) {
    const std::string header = fullHeader();
    for (std::size_t length = 0; length < header.size(); ++length) {
        const std::string cut = header.substr(0, length);
        EXPECT_FALSE(parseRpmHeader(cut)) << length;
    }
}

TEST(RpmHeader, NumbersThatLieLeadNowhere) {
    const std::string header = fullHeader();
    std::size_t understood = 0;
    for (std::size_t place = 0; place < header.size(); ++place) {
        std::string wrong = header;
        wrong[place] = '\xFF';
        if (parseRpmHeader(wrong)) ++understood;
        forEachRpmPath(wrong, [](const std::string& path) { EXPECT_LT(path.size(), 4096U); });
    }
    EXPECT_GT(understood, 0U);
}

}  // namespace
