#include "scanners/zuksw/formats/archive.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/zuksw/archive_builder.h"

namespace zuksw {
namespace {

bool everything(std::string_view /*name*/) {
    return true;
}

struct Content {
    ArchiveOutcome outcome;
    std::vector<ArchiveMember> members;
};

Content read(
    const std::string& bytes, const ArchiveLimits& limits = {},
    const std::function<bool(std::string_view)>& wanted = everything,
    const std::function<bool()>& mayGoOn = [] { return true; }) {
    Content content;
    const auto take = [&](ArchiveMember m) { content.members.push_back(std::move(m)); };
    content.outcome = readArchive(bytes, limits, wanted, take, mayGoOn);
    return content;
}

struct FormatCase {
    std::string_view what;
    ArchiveForm form;
};

constexpr FormatCase kFormats[] = {{"zip", zipForm},       {"tar", tarForm},      {"cpio", cpioForm},
                                   {"ar", arForm},         {"tar.gz", tarGzForm}, {"tar.xz", tarXzForm},
                                   {"tar.zst", tarZstForm}};

TEST(Archive, MembersOfEveryFormat) {
    for (const FormatCase& c : kFormats) {
        const Content content = read(
            packArchive(c.form, {{"first", "one"}, {"second", std::string(100000, 'x')}, {"empty", ""}}));
        EXPECT_EQ(content.outcome.state, ArchiveState::kOk) << c.what << content.outcome.problem;
        ASSERT_EQ(content.members.size(), 3U) << c.what;
        EXPECT_EQ(content.members[0].name, "first") << c.what;
        EXPECT_EQ(content.members[0].content, "one") << c.what;
        EXPECT_EQ(content.members[1].content, std::string(100000, 'x')) << c.what;
        EXPECT_EQ(content.members[2].content, "") << c.what;
    }
}

TEST(Archive, StopsBetweenMembers) {
    for (const FormatCase& c : kFormats) {
        int members = 0;
        const ArchiveOutcome outcome = readArchive(
            packArchive(c.form, {{"first", "one"}, {"second", "two"}}), {}, everything,
            [&](const ArchiveMember& /*member*/) { ++members; }, [&] { return members == 0; });
        EXPECT_EQ(ArchiveState::kStopped, outcome.state) << c.what;
        EXPECT_EQ(1, members) << c.what;
    }
}

// Of what is inflated, wanted or passed over: other members are there at once.
TEST(Archive, StopsInsideALargeMember) {
    struct Case {
        FormatCase format;
        bool isWanted;
    };
    constexpr Case kCases[] = {{{"zip", zipForm}, true},        {{"tar.gz", tarGzForm}, true},
                               {{"tar.xz", tarXzForm}, true},   {{"tar.zst", tarZstForm}, true},
                               {{"tar.gz", tarGzForm}, false},  {{"tar.xz", tarXzForm}, false},
                               {{"tar.zst", tarZstForm}, false}};
    const ArchiveLimits anyRatio = {100, 16'000'000, 16'000'000, 1'000'000};
    for (const Case& c : kCases) {
        int asked = 0;
        const Content content = read(
            packArchive(c.format.form, {{"large", std::string(8'000'000, 'x')}}), anyRatio,
            [&](std::string_view /*name*/) { return c.isWanted; }, [&] { return ++asked <= 3; });
        EXPECT_EQ(ArchiveState::kStopped, content.outcome.state) << c.format.what << c.isWanted;
        EXPECT_EQ(0U, content.members.size()) << c.format.what << c.isWanted;
    }
}

TEST(Archive, OnlyWhatIsWanted) {
    for (const FormatCase& c : kFormats) {
        const Content content =
            read(packArchive(c.form, {{"first", "one"}, {"second", "two"}, {"third", "three"}}), {},
                 [](std::string_view name) { return name == "second"; });
        ASSERT_EQ(content.members.size(), 1U) << c.what;
        EXPECT_EQ(content.members[0].content, "two") << c.what;
    }
}

TEST(Archive, OnlyRegularFilesAreMembers) {
    const Content content = read(packArchive(
        tarForm, {{"folder/", "", AE_IFDIR}, {"link", "", AE_IFLNK}, {"pipe", "", AE_IFIFO}, {"file", "x"}}));
    ASSERT_EQ(content.members.size(), 1U);
    EXPECT_EQ(content.members[0].name, "file");
}

// A zip of one empty file, whose name is marked as UTF-8.
std::string zipOfUtf8Name(const std::string& name) {
    std::string zip = packArchive(zipForm, {{std::string(name.size(), 'x'), ""}});
    for (const char* record : {"PK\3\4", "PK\1\2"}) {
        const bool central = record[2] == 1;
        const std::size_t begin = zip.find(record, 0, 4);
        zip[begin + (central ? 9 : 7)] |= 0x08;  // bit 11 of the flags
        zip.replace(begin + (central ? 46 : 30), name.size(), name);
    }
    return zip;
}

TEST(Archive, DamageToWhatIsNotWantedIsSeen) {
    const auto nothing = [](std::string_view) { return false; };
    const std::string tar = packArchive(tarForm, {{"first", "one"}, {"second", std::string(600, 'x')}});
    EXPECT_EQ(read(tar, {}, nothing).outcome.state, ArchiveState::kOk);
    EXPECT_EQ(read(tar.substr(0, 2200), {}, nothing).outcome.state, ArchiveState::kDamaged);
    std::string wrong = tar;
    wrong[1024] = 'S';  // the name of the second, of which there is a sum
    const Content content = read(wrong);
    EXPECT_EQ(content.outcome.state, ArchiveState::kDamaged);
    EXPECT_EQ(content.outcome.problem.find("INTERNAL"), std::string::npos) << content.outcome.problem;
}

TEST(Archive, NamesBeyondAsciiAreRead) {
    const Content zip = read(zipOfUtf8Name("caf\303\251"));
    ASSERT_EQ(zip.members.size(), 1U);
    EXPECT_EQ(zip.members[0].name, "caf\303\251");
    const Content tar = read(packArchive(tarForm, {{"caf\351", "x"}}));
    ASSERT_EQ(tar.members.size(), 1U);
    EXPECT_EQ(tar.members[0].name, "caf\351");
}

TEST(Archive, ANameThatCannotBeReadIsAMemberThatCannot) {
    const Content content = read(zipOfUtf8Name("caf\377"));
    ASSERT_EQ(content.members.size(), 1U);
    EXPECT_EQ(content.members[0].state, ArchiveState::kDamaged);
}

TEST(Archive, NamesLoseWhatLeadsToTheRoot) {
    const Content content = read(packArchive(
        tarForm, {{"./usr/bin/a", "a"}, {"/etc/b", "b"}, {"../../etc/passwd", "c"}, {"\xE9", "d"}}));
    ASSERT_EQ(content.members.size(), 4U);
    EXPECT_EQ(content.members[0].name, "usr/bin/a");
    EXPECT_EQ(content.members[1].name, "etc/b");
    EXPECT_EQ(content.members[2].name, "../../etc/passwd");
    EXPECT_EQ(content.members[3].name, "\xE9");
}

TEST(Archive, OtherFilesAreNone) {
    for (const std::string bytes : {"", "x", "#!/bin/sh\nexit 0\n",
                                    "\x7F"
                                    "ELF"}) {
        EXPECT_EQ(read(bytes).outcome.state, ArchiveState::kNotAnArchive) << bytes;
    }
}

TEST(Archive, MembersBeforeTheDamageAreKept) {
    for (const ArchiveForm form : {tarGzForm, tarXzForm, tarZstForm}) {
        std::string noise;
        for (std::uint32_t i = 1; noise.size() < 300000; i = i * 1664525 + 1013904223)
            noise += static_cast<char>(i >> 24U);
        const std::string whole =
            packArchive(form, {{"first", "one"}, {"second", noise}, {"third", "three"}});
        const Content content = read(whole.substr(0, whole.size() * 3 / 4));
        EXPECT_EQ(content.outcome.state, ArchiveState::kDamaged);
        ASSERT_GE(content.members.size(), 1U);
        EXPECT_EQ(content.members[0].content, "one");
        EXPECT_EQ(content.members.back().state,
                  content.members.size() == 1 ? ArchiveState::kOk : ArchiveState::kDamaged);
    }
}

TEST(Archive, AMemberWithAWrongChecksumIsDamaged) {
    std::string bytes = packArchive(zipForm, {{"first", "some text that is long enough"}, {"second", "two"}});
    // The member's own header has 30 bytes, then its name and extra data, whose lengths stand at 26 and 28.
    const std::size_t data =
        30U + static_cast<unsigned char>(bytes[26]) + static_cast<unsigned char>(bytes[28]);
    bytes[data + 5] = static_cast<char>(bytes[data + 5] ^ 1);
    const Content content = read(bytes);
    ASSERT_GE(content.members.size(), 1U);
    EXPECT_EQ(content.members[0].state, ArchiveState::kDamaged);
    EXPECT_EQ(content.members[0].content, "");
}

TEST(Archive, TheNumberOfMembersIsLimited) {
    ArchiveLimits limits;
    limits.maxMembers = 2;
    const std::vector<ArchiveEntry> entries = {{"a", "1"}, {"b", "2"}, {"c", "3"}};
    const Content content = read(packArchive(zipForm, entries), limits);
    EXPECT_EQ(content.outcome.state, ArchiveState::kLimit);
    EXPECT_EQ(content.members.size(), 2U);
    EXPECT_EQ(read(packArchive(zipForm, {{"a", "1"}, {"b", "2"}}), limits).outcome.state, ArchiveState::kOk);
}

TEST(Archive, AMemberThatIsTooLargeIsPassedOver) {
    ArchiveLimits limits;
    limits.maxMemberSize = 10;
    for (const FormatCase& c : kFormats) {
        const Content content = read(
            packArchive(c.form, {{"large", std::string(11, 'x')}, {"small", std::string(10, 'y')}}), limits);
        EXPECT_EQ(content.outcome.state, ArchiveState::kOk) << c.what;
        ASSERT_EQ(content.members.size(), 2U) << c.what;
        EXPECT_EQ(content.members[0].state, ArchiveState::kLimit) << c.what;
        EXPECT_EQ(content.members[1].content, std::string(10, 'y')) << c.what;
    }
}

TEST(Archive, TheTotalIsLimitedAlsoForWhatIsPassedOver) {
    ArchiveLimits limits;
    limits.maxTotal = 5000;
    limits.maxRatio = 1000000;
    const Content content =
        read(packArchive(tarGzForm, {{"large", std::string(100000, 'x')}, {"small", "y"}}), limits,
             [](std::string_view name) { return name == "small"; });
    EXPECT_EQ(content.outcome.state, ArchiveState::kLimit);
    EXPECT_TRUE(content.members.empty());
}

TEST(Archive, BombsAreLeftWhileTheyInflate) {
    for (const ArchiveForm form : {zipForm, tarGzForm, tarXzForm, tarZstForm}) {
        const Content content = read(packArchive(form, {{"bomb", std::string(12U << 20U, '\0')}}));
        EXPECT_EQ(content.outcome.state, ArchiveState::kLimit);
        EXPECT_LE(content.outcome.inflated, 4U << 20U);
    }
}

TEST(Archive, AnEncryptedMemberIsTold) {
    std::string bytes = packArchive(zipForm, {{"secret", "x"}, {"open", "y"}});
    bytes[6] = static_cast<char>(bytes[6] | 1);  // the flags in the member's own header
    const auto central = bytes.find("PK\x01\x02");
    ASSERT_NE(central, std::string::npos);
    bytes[central + 8] = static_cast<char>(bytes[central + 8] | 1);
    const Content content = read(bytes);
    ASSERT_EQ(content.members.size(), 2U);
    EXPECT_EQ(content.members[0].state, ArchiveState::kEncrypted);
    EXPECT_EQ(content.members[1].content, "y");
}

}  // namespace
}  // namespace zuksw
