#include "scanners/zuksw/formats/archive.h"

#include <archive.h>
#include <archive_entry.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zuksw {
namespace {

struct Entry {
    std::string name;
    std::string content;
    unsigned type = AE_IFREG;
};

using Configure = void (*)(archive*);

std::string pack(Configure configure, const std::vector<Entry>& entries) {
    std::string bytes(8U << 20U, '\0');
    std::size_t used = 0;
    archive* writer = archive_write_new();
    configure(writer);
    archive_write_open_memory(writer, bytes.data(), bytes.size(), &used);
    for (const Entry& entry : entries) {
        archive_entry* header = archive_entry_new();
        archive_entry_set_pathname(header, entry.name.c_str());
        archive_entry_set_size(header, static_cast<la_int64_t>(entry.content.size()));
        archive_entry_set_filetype(header, entry.type);
        archive_entry_set_perm(header, 0644);
        if (entry.type == AE_IFLNK) archive_entry_set_symlink(header, "target");
        archive_write_header(writer, header);
        archive_write_data(writer, entry.content.data(), entry.content.size());
        archive_entry_free(header);
    }
    archive_write_close(writer);
    archive_write_free(writer);
    bytes.resize(used);
    return bytes;
}

void zip(archive* writer) {
    archive_write_set_format_zip(writer);
}
void tar(archive* writer) {
    archive_write_set_format_ustar(writer);
}
void cpio(archive* writer) {
    archive_write_set_format_cpio_newc(writer);
}
void ar(archive* writer) {
    archive_write_set_format_ar_svr4(writer);
}
void tarGz(archive* writer) {
    tar(writer);
    archive_write_add_filter_gzip(writer);
}
void tarXz(archive* writer) {
    tar(writer);
    archive_write_add_filter_xz(writer);
}
void tarZst(archive* writer) {
    tar(writer);
    archive_write_add_filter_zstd(writer);
}

bool everything(std::string_view /*name*/) {
    return true;
}

struct Content {
    ArchiveOutcome outcome;
    std::vector<ArchiveMember> members;
};

Content read(const std::string& bytes, const ArchiveLimits& limits = {},
             const std::function<bool(std::string_view)>& wanted = everything) {
    Content content;
    content.outcome =
        readArchive(bytes, limits, wanted, [&](ArchiveMember m) { content.members.push_back(std::move(m)); });
    return content;
}

struct FormatCase {
    std::string_view what;
    Configure configure;
};

constexpr FormatCase kFormats[] = {{"zip", zip},      {"tar", tar},      {"cpio", cpio},     {"ar", ar},
                                   {"tar.gz", tarGz}, {"tar.xz", tarXz}, {"tar.zst", tarZst}};

TEST(Archive, MembersOfEveryFormat) {
    for (const FormatCase& c : kFormats) {
        const Content content =
            read(pack(c.configure, {{"first", "one"}, {"second", std::string(100000, 'x')}, {"empty", ""}}));
        EXPECT_EQ(content.outcome.state, ArchiveState::kOk) << c.what << content.outcome.problem;
        ASSERT_EQ(content.members.size(), 3U) << c.what;
        EXPECT_EQ(content.members[0].name, "first") << c.what;
        EXPECT_EQ(content.members[0].content, "one") << c.what;
        EXPECT_EQ(content.members[1].content, std::string(100000, 'x')) << c.what;
        EXPECT_EQ(content.members[2].content, "") << c.what;
    }
}

TEST(Archive, OnlyWhatIsWanted) {
    for (const FormatCase& c : kFormats) {
        const Content content =
            read(pack(c.configure, {{"first", "one"}, {"second", "two"}, {"third", "three"}}), {},
                 [](std::string_view name) { return name == "second"; });
        ASSERT_EQ(content.members.size(), 1U) << c.what;
        EXPECT_EQ(content.members[0].content, "two") << c.what;
    }
}

TEST(Archive, OnlyRegularFilesAreMembers) {
    const Content content = read(pack(
        tar, {{"folder/", "", AE_IFDIR}, {"link", "", AE_IFLNK}, {"pipe", "", AE_IFIFO}, {"file", "x"}}));
    ASSERT_EQ(content.members.size(), 1U);
    EXPECT_EQ(content.members[0].name, "file");
}

TEST(Archive, NamesLoseWhatLeadsToTheRoot) {
    const Content content =
        read(pack(tar, {{"./usr/bin/a", "a"}, {"/etc/b", "b"}, {"../../etc/passwd", "c"}, {"\xE9", "d"}}));
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
    for (const Configure configure : {tarGz, tarXz, tarZst}) {
        std::string noise;
        for (std::uint32_t i = 1; noise.size() < 300000; i = i * 1664525 + 1013904223)
            noise += static_cast<char>(i >> 24U);
        const std::string whole = pack(configure, {{"first", "one"}, {"second", noise}, {"third", "three"}});
        const Content content = read(whole.substr(0, whole.size() * 3 / 4));
        EXPECT_EQ(content.outcome.state, ArchiveState::kDamaged);
        ASSERT_GE(content.members.size(), 1U);
        EXPECT_EQ(content.members[0].content, "one");
        EXPECT_EQ(content.members.back().state,
                  content.members.size() == 1 ? ArchiveState::kOk : ArchiveState::kDamaged);
    }
}

TEST(Archive, AMemberWithAWrongChecksumIsDamaged) {
    std::string bytes = pack(zip, {{"first", "some text that is long enough"}, {"second", "two"}});
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
    const std::vector<Entry> entries = {{"a", "1"}, {"b", "2"}, {"c", "3"}};
    const Content content = read(pack(zip, entries), limits);
    EXPECT_EQ(content.outcome.state, ArchiveState::kLimit);
    EXPECT_EQ(content.members.size(), 2U);
    EXPECT_EQ(read(pack(zip, {{"a", "1"}, {"b", "2"}}), limits).outcome.state, ArchiveState::kOk);
}

TEST(Archive, AMemberThatIsTooLargeIsPassedOver) {
    ArchiveLimits limits;
    limits.maxMemberSize = 10;
    for (const FormatCase& c : kFormats) {
        const Content content = read(
            pack(c.configure, {{"large", std::string(11, 'x')}, {"small", std::string(10, 'y')}}), limits);
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
    const Content content = read(pack(tarGz, {{"large", std::string(100000, 'x')}, {"small", "y"}}), limits,
                                 [](std::string_view name) { return name == "small"; });
    EXPECT_EQ(content.outcome.state, ArchiveState::kLimit);
    EXPECT_TRUE(content.members.empty());
}

TEST(Archive, BombsAreLeftWhileTheyInflate) {
    for (const Configure configure : {zip, tarGz, tarXz, tarZst}) {
        const Content content = read(pack(configure, {{"bomb", std::string(12U << 20U, '\0')}}));
        EXPECT_EQ(content.outcome.state, ArchiveState::kLimit);
        EXPECT_LE(content.outcome.inflated, 4U << 20U);
    }
}

TEST(Archive, AnEncryptedMemberIsTold) {
    std::string bytes = pack(zip, {{"secret", "x"}, {"open", "y"}});
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
