#include "scanners/zuksw/formats/elf.h"

#include <gtest/gtest.h>

#include "scanners/zuksw/formats/elf_dynamic.h"
#include "scanners/zuksw/formats/elf_notes.h"
#include "tests/zuksw/elf_builder.h"

namespace zuksw {
namespace {

constexpr bool kBooleans[] = {false, true};

ElfBuilder library(bool is64, bool bigEndian) {
    ElfBuilder builder(is64, bigEndian);
    builder.addDynamic({{DT_NEEDED, "libc.so.6"},
                        {DT_NEEDED, "libm.so.6"},
                        {DT_SONAME, "libx.so.1"},
                        {DT_RPATH, "/opt/x"},
                        {DT_RUNPATH, "$ORIGIN/../lib"}});
    builder.add(".note.gnu.build-id", SHT_NOTE, builder.note("GNU", NT_GNU_BUILD_ID, "\x01\xAB\xFF"),
                PT_NOTE);
    builder.add(".rodata", SHT_PROGBITS, "hello");
    return builder;
}

TEST(Elf, BothClassesAndByteOrders) {
    for (const bool is64 : kBooleans) {
        for (const bool bigEndian : kBooleans) {
            const std::string file = library(is64, bigEndian).build();
            const std::optional<Elf> elf = Elf::parse(file);
            ASSERT_TRUE(elf) << is64 << bigEndian;
            const ElfDynamic dynamic = readElfDynamic(*elf);
            EXPECT_EQ(dynamic.soname, "libx.so.1") << is64 << bigEndian;
            EXPECT_EQ(dynamic.needed, (std::vector<std::string_view>{"libc.so.6", "libm.so.6"}))
                << is64 << bigEndian;
            EXPECT_EQ(dynamic.rpath, "/opt/x") << is64 << bigEndian;
            EXPECT_EQ(dynamic.runpath, "$ORIGIN/../lib") << is64 << bigEndian;
            EXPECT_EQ(elfBuildId(*elf), "01abff") << is64 << bigEndian;
            EXPECT_EQ(elf->sectionBytes(".rodata"), "hello") << is64 << bigEndian;
            EXPECT_EQ(elf->sectionBytes(".none"), std::nullopt) << is64 << bigEndian;
            EXPECT_EQ(elf->className(), is64 ? "64" : "32");
        }
    }
}

struct MachineCase {
    unsigned machine;
    bool is64;
    bool bigEndian;
    std::string_view name;
};

TEST(Elf, MachinesHaveTheKernelsNames) {
    const MachineCase cases[] = {
        {EM_X86_64, true, false, "x86_64"},   {EM_386, false, false, "i386"},
        {EM_AARCH64, true, false, "aarch64"}, {EM_PPC64, true, false, "ppc64le"},
        {EM_PPC64, true, true, "ppc64"},      {EM_S390, true, true, "s390x"},
        {EM_S390, false, true, "s390"},       {EM_RISCV, true, false, "riscv64"},
        {EM_ARM, false, false, "arm"},        {0xABCD, true, false, "43981"},
        {EM_X86_64, true, true, "62"},
    };
    for (const MachineCase& c : cases) {
        ElfBuilder builder(c.is64, c.bigEndian);
        builder.machine = c.machine;
        const std::string file = builder.build();
        const std::optional<Elf> elf = Elf::parse(file);
        ASSERT_TRUE(elf);
        EXPECT_EQ(elf->machine(), c.name);
    }
}

struct KindCase {
    std::string_view what;
    unsigned type;
    std::vector<ElfBuilder::Entry> dynamic;
    bool interpreter;
    bool modinfo;
    ElfKind kind;
};

TEST(Elf, ProgramsLibrariesAndModules) {
    const KindCase cases[] = {
        {"a program at a fixed place", ET_EXEC, {}, true, false, ElfKind::kProgram},
        {"a static one", ET_EXEC, {}, false, false, ElfKind::kProgram},
        {"one that can be anywhere", ET_DYN, {{DT_FLAGS_1, "", 0x08000000}}, true, false, ElfKind::kProgram},
        {"the same without the mark", ET_DYN, {}, true, false, ElfKind::kProgram},
        {"a library", ET_DYN, {{DT_SONAME, "libx.so.1"}}, false, false, ElfKind::kLibrary},
        {"a library that can be started", ET_DYN, {{DT_SONAME, "libc.so.6"}}, true, false, ElfKind::kLibrary},
        {"a plug-in", ET_DYN, {}, false, false, ElfKind::kLibrary},
        {"a kernel module", ET_REL, {}, false, true, ElfKind::kModule},
        {"an object file", ET_REL, {}, false, false, ElfKind::kOther},
        {"a core dump", ET_CORE, {}, false, false, ElfKind::kOther},
    };
    for (const KindCase& c : cases) {
        ElfBuilder builder(true, false);
        builder.fileType = c.type;
        builder.addDynamic(c.dynamic);
        if (c.interpreter) builder.add(".interp", SHT_PROGBITS, std::string("/lib/ld.so\0", 11), PT_INTERP);
        if (c.modinfo) builder.add(".modinfo", SHT_PROGBITS, "license=GPL");
        const std::string file = builder.build();
        const std::optional<Elf> elf = Elf::parse(file);
        ASSERT_TRUE(elf) << c.what;
        EXPECT_EQ(elfKind(*elf, readElfDynamic(*elf)), c.kind) << c.what;
        EXPECT_EQ(elf->interpreter(), c.interpreter ? "/lib/ld.so" : "") << c.what;
    }
}

TEST(Elf, PackageNote) {
    ElfBuilder builder(true, false);
    builder.add(
        ".note.package", SHT_NOTE,
        builder.note("FDO", 0xcafe1a7e,
                     std::string(R"({"type":"deb","os":"debian",)") +
                         R"("name":"systemd","version":"252.39-1~deb12u1","architecture":"amd64"})" + '\0'));
    const std::string file = builder.build();
    const std::optional<ElfPackageNote> note = elfPackageNote(*Elf::parse(file));
    ASSERT_TRUE(note);
    EXPECT_EQ(note->type, "deb");
    EXPECT_EQ(note->os, "debian");
    EXPECT_EQ(note->name, "systemd");
    EXPECT_EQ(note->version, "252.39-1~deb12u1");
    EXPECT_EQ(note->architecture, "amd64");
}

TEST(Elf, APackageNoteThatIsNoJsonIsNone) {
    ElfBuilder builder(true, false);
    builder.add(".note.package", SHT_NOTE, builder.note("FDO", 0xcafe1a7e, R"({"name":"x")"));
    const std::string file = builder.build();
    EXPECT_FALSE(elfPackageNote(*Elf::parse(file)));
}

TEST(Elf, NotesOfSegmentsCountWhereThereAreNoSections) {
    std::string file = library(true, false).build();
    file.replace(offsetof(Elf64_Ehdr, e_shoff), 8, 8, '\0');
    const std::optional<Elf> elf = Elf::parse(file);
    ASSERT_TRUE(elf);
    EXPECT_TRUE(elf->sections().empty());
    EXPECT_EQ(elfBuildId(*elf), "01abff");
    EXPECT_EQ(readElfDynamic(*elf).soname, "libx.so.1");
}

TEST(Elf, OtherFilesAreNone) {
    const std::string file = library(true, false).build();
    EXPECT_FALSE(Elf::parse(""));
    EXPECT_FALSE(Elf::parse("#!/bin/sh\n"));
    EXPECT_FALSE(Elf::parse(file.substr(0, sizeof(Elf64_Ehdr) - 1)));
    for (const std::size_t place : {EI_CLASS, EI_DATA}) {
        std::string wrong = file;
        wrong[place] = 3;
        EXPECT_FALSE(Elf::parse(wrong)) << place;
    }
}

// Reads all there is to read.
void readEverything(const std::string& file) {
    const std::optional<Elf> elf = Elf::parse(file);
    if (!elf) return;
    const ElfDynamic dynamic = readElfDynamic(*elf);
    static_cast<void>(elfKind(*elf, dynamic));
    static_cast<void>(elfBuildId(*elf));
    static_cast<void>(elfPackageNote(*elf));
    for (const ElfSection& section : elf->sections()) static_cast<void>(elf->sectionBytes(section.name));
}

// What a cut file keeps must not be read beyond its end: the sanitizers watch, and the class of the file
// stays.
TEST(Elf, ACutFileGivesLess) {
    const std::string file = library(false, true).build();
    for (std::size_t length = sizeof(Elf32_Ehdr); length < file.size(); ++length) {
        const std::string cut = file.substr(0, length);
        readEverything(cut);
        EXPECT_TRUE(Elf::parse(cut)) << length;
    }
}

TEST(Elf, NumbersThatLieLeadNowhere) {
    const std::string file = library(true, false).build();
    for (std::size_t place = EI_NIDENT; place < file.size(); ++place) {
        std::string wrong = file;
        wrong[place] = '\xFF';
        readEverything(wrong);
        EXPECT_TRUE(Elf::parse(wrong)) << place;
    }
}

}  // namespace
}  // namespace zuksw
