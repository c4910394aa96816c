#include "scanners/zuksw/formats/go_build_info.h"

#include <gtest/gtest.h>

#include "tests/zuksw/elf_builder.h"

namespace zuksw {
namespace {

constexpr std::string_view kModules =
    "path\texample.org/tool/cmd/tool\nmod\texample.org/tool\tv1.4.0\th1:abc=\n"
    "dep\tgolang.org/x/sys\tv0.11.0\th1:def=\ndep\texample.org/old\tv1.0.0\n=>\texample.org/"
    "new\tv2.0.0\th1:ghi=\n"
    "build\t-compiler=gc\n";

std::string marked(std::string_view modules) {
    return std::string(16, 'b').append(modules).append(16, 'e');
}

std::string header(unsigned width, unsigned flags) {
    std::string bytes = "\xFF Go buildinf:";
    bytes += static_cast<char>(width);
    bytes += static_cast<char>(flags);
    return bytes;
}

std::string inlineText(std::string_view text) {
    std::string bytes;
    std::size_t rest = text.size();
    for (; rest >= 0x80; rest >>= 7U) bytes += static_cast<char>(0x80U | (rest & 0x7FU));
    bytes += static_cast<char>(rest);
    return bytes.append(text);
}

std::string newProgram() {
    ElfBuilder builder(true, false);
    std::string info = header(0, 2);
    info.resize(32, '\0');
    builder.add(".go.buildinfo", SHT_PROGBITS, info + inlineText("go1.21.4") + inlineText(marked(kModules)));
    return builder.build();
}

std::string oldProgram(bool is64, bool bigEndian) {
    ElfBuilder builder(is64, bigEndian);
    const unsigned width = is64 ? 8 : 4;
    const std::string modules = marked(kModules);
    const auto addText = [&](const std::string& text) {
        const std::uint64_t at = builder.add(".data", SHT_PROGBITS, text);
        return ElfBuilder::kBase +
               builder.add(".data", SHT_PROGBITS,
                           builder.address(ElfBuilder::kBase + at) + builder.address(text.size()));
    };
    const std::uint64_t version = addText("go1.16.2");
    const std::uint64_t list = addText(modules);
    std::string info = header(width, bigEndian ? 1 : 0) + builder.address(version) + builder.address(list);
    info.resize(32, '\0');
    builder.add(".go.buildinfo", SHT_PROGBITS, info);
    return builder.build();
}

void expectModules(const GoBuildInfo& info) {
    EXPECT_EQ(info.path, "example.org/tool/cmd/tool");
    EXPECT_EQ(info.main.path, "example.org/tool");
    EXPECT_EQ(info.main.version, "v1.4.0");
    ASSERT_EQ(info.dependencies.size(), 2U);
    EXPECT_EQ(info.dependencies[0].path, "golang.org/x/sys");
    EXPECT_EQ(info.dependencies[0].version, "v0.11.0");
    EXPECT_EQ(info.dependencies[1].path, "example.org/old");
    EXPECT_EQ(info.dependencies[1].version, "v2.0.0");  // of the module that replaces it
}

TEST(GoBuildInfo, TextsInTheHeader) {
    const std::string file = newProgram();
    const std::optional<GoBuildInfo> info = readGoBuildInfo(*Elf::parse(file));
    ASSERT_TRUE(info);
    EXPECT_EQ(info->goVersion, "go1.21.4");
    expectModules(*info);
}

TEST(GoBuildInfo, TextsByAddress) {
    for (const bool is64 : {false, true}) {
        for (const bool bigEndian : {false, true}) {
            const std::string file = oldProgram(is64, bigEndian);
            const std::optional<GoBuildInfo> info = readGoBuildInfo(*Elf::parse(file));
            ASSERT_TRUE(info) << is64 << bigEndian;
            EXPECT_EQ(info->goVersion, "go1.16.2");
            expectModules(*info);
        }
    }
}

TEST(GoBuildInfo, WithoutModulesTheVersionIsKnown) {
    ElfBuilder builder(true, false);
    std::string bytes = header(0, 2);
    bytes.resize(32, '\0');
    builder.add(".go.buildinfo", SHT_PROGBITS, bytes + inlineText("go1.20") + inlineText(""));
    const std::string file = builder.build();
    const std::optional<GoBuildInfo> info = readGoBuildInfo(*Elf::parse(file));
    ASSERT_TRUE(info);
    EXPECT_EQ(info->goVersion, "go1.20");
    EXPECT_EQ(info->path, "");
}

struct BrokenCase {
    std::string_view what;
    std::string bytes;
};

TEST(GoBuildInfo, BrokenHeadersAreNone) {
    const BrokenCase cases[] = {
        {"nothing", ""},
        {"another mark", std::string(32, 'x')},
        {"cut", header(0, 2)},
        {"a length beyond the end", std::string(header(0, 2)).append(16, '\0') + "\xFF\xFF\xFF\x7F"},
        {"a length without end", std::string(header(0, 2)).append(16, '\0') + std::string(2000, '\xFF')},
        {"addresses of an odd width", std::string(header(3, 0)).append(16, '\1')},
        {"addresses that lead nowhere", std::string(header(8, 0)).append(16, '\x7F')},
    };
    for (const BrokenCase& c : cases) {
        ElfBuilder builder(true, false);
        builder.add(".go.buildinfo", SHT_PROGBITS, c.bytes);
        const std::string file = builder.build();
        EXPECT_FALSE(readGoBuildInfo(*Elf::parse(file))) << c.what;
    }
}

TEST(GoBuildInfo, OtherProgramsHaveNone) {
    const std::string file = ElfBuilder(true, false).build();
    EXPECT_FALSE(readGoBuildInfo(*Elf::parse(file)));
}

}  // namespace
}  // namespace zuksw
