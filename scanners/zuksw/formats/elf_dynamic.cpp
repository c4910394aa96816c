#include "scanners/zuksw/formats/elf_dynamic.h"

#include <elf.h>

namespace zuksw {

namespace {

// Real tables have some dozens of entries; the limits bound the time that a made one can take.
constexpr std::uint64_t kMaxEntries = 65536;
constexpr std::size_t kMaxText = 4096;

#ifndef DF_1_PIE
#define DF_1_PIE 0x08000000
#endif

struct Entry {
    std::uint64_t tag = 0;
    std::uint64_t value = 0;
};

// The dynamic segment; where there are no segments, the section.
std::optional<std::string_view> dynamicBytes(const Elf& elf) {
    if (const ElfSegment* segment = elf.segment(PT_DYNAMIC))
        return elf.bytes().piece(segment->offset, segment->size);
    return elf.sectionBytes(".dynamic");
}

std::vector<Entry> readEntries(const Elf& elf) {
    std::vector<Entry> entries;
    const std::optional<std::string_view> table = dynamicBytes(elf);
    if (!table) return entries;
    const Bytes bytes(*table, elf.bytes().order());
    const unsigned width = elf.is64() ? 8 : 4;
    for (std::uint64_t i = 0; i < kMaxEntries; ++i) {
        const auto tag = bytes.number(i * 2 * width, width);
        const auto value = bytes.number((i * 2 + 1) * width, width);
        if (!tag || !value || *tag == DT_NULL) break;
        entries.push_back({*tag, *value});
    }
    return entries;
}

// Where the texts lie that the entries refer to; npos when nobody knows.
std::optional<std::uint64_t> textTable(const Elf& elf, const std::vector<Entry>& entries) {
    for (const Entry& entry : entries) {
        if (entry.tag == DT_STRTAB) return elf.offsetOf(entry.value);
    }
    return std::nullopt;
}

}  // namespace

ElfDynamic readElfDynamic(const Elf& elf) {
    ElfDynamic dynamic;
    const std::vector<Entry> entries = readEntries(elf);
    const std::optional<std::uint64_t> texts = textTable(elf, entries);
    const auto textOf = [&](const Entry& entry) -> std::string_view {
        if (!texts || entry.value > elf.bytes().size()) return {};
        return elf.bytes().text(*texts + entry.value, kMaxText).value_or("");
    };
    for (const Entry& entry : entries) {
        if (entry.tag == DT_SONAME) dynamic.soname = textOf(entry);
        if (entry.tag == DT_RPATH) dynamic.rpath = textOf(entry);
        if (entry.tag == DT_RUNPATH) dynamic.runpath = textOf(entry);
        if (entry.tag == DT_FLAGS_1) dynamic.isPie = (entry.value & DF_1_PIE) != 0;
        if (entry.tag != DT_NEEDED) continue;
        if (const std::string_view name = textOf(entry); !name.empty()) dynamic.needed.push_back(name);
    }
    return dynamic;
}

ElfKind elfKind(const Elf& elf, const ElfDynamic& dynamic) {
    if (elf.type() == ET_EXEC) return ElfKind::kProgram;
    if (elf.type() == ET_REL) return elf.section(".modinfo") != nullptr ? ElfKind::kModule : ElfKind::kOther;
    if (elf.type() != ET_DYN) return ElfKind::kOther;
    if (dynamic.isPie) return ElfKind::kProgram;
    // Some libraries can be started too, so an interpreter alone makes no program.
    const bool program = dynamic.soname.empty() && !elf.interpreter().empty();
    return program ? ElfKind::kProgram : ElfKind::kLibrary;
}

}  // namespace zuksw
