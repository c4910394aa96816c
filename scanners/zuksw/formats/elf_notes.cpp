#include "scanners/zuksw/formats/elf_notes.h"

#include <elf.h>

#include "scanners/zuksw/formats/value.h"

namespace zuksw {

namespace {

constexpr std::uint32_t kPackageNote = 0xcafe1a7e;
constexpr std::size_t kMaxNotes = 4096;  // in all segments and sections, which may overlap
constexpr std::uint64_t kHeaderSize = 12;

struct Wanted {
    std::string_view owner;
    std::uint32_t type = 0;
    std::size_t notesLeft = kMaxNotes;
};

std::uint64_t alignUp(std::uint64_t offset, std::uint64_t alignment) {
    return (offset + alignment - 1) / alignment * alignment;
}

// Owners end with a NUL that counts.
std::string_view withoutNul(std::string_view owner) {
    return owner.substr(0, owner.find('\0'));
}

std::optional<std::string_view> findIn(const Bytes& notes, std::uint64_t alignment, Wanted& wanted) {
    if (alignment != 8) alignment = 4;
    std::uint64_t offset = 0;
    while (wanted.notesLeft > 0 && notes.piece(offset, kHeaderSize)) {
        --wanted.notesLeft;
        const std::uint64_t ownerSize = notes.numberOr0(offset, 4);
        const std::uint64_t contentSize = notes.numberOr0(offset + 4, 4);
        const std::uint64_t contentAt = alignUp(offset + kHeaderSize + ownerSize, alignment);
        const auto owner = notes.piece(offset + kHeaderSize, ownerSize);
        const auto content = notes.piece(contentAt, contentSize);
        if (!owner || !content) break;
        if (withoutNul(*owner) == wanted.owner && notes.numberOr0(offset + 8, 4) == wanted.type)
            return content;
        offset = alignUp(contentAt + contentSize, alignment);
    }
    return std::nullopt;
}

std::string firstValue(std::string_view json, std::string_view pointer) {
    const Values values = extractValues(ValueFormat::kJson, json, std::nullopt, pointer);
    return values.found.empty() ? "" : values.found.front();
}

}  // namespace

std::optional<std::string_view> findElfNote(const Elf& elf, std::string_view owner, std::uint32_t type) {
    Wanted wanted = {owner, type};
    const auto find = [&](std::uint64_t offset, std::uint64_t size, std::uint64_t alignment) {
        const auto piece = elf.bytes().piece(offset, size);
        return findIn(Bytes(piece.value_or(""), elf.bytes().order()), alignment, wanted);
    };
    for (const ElfSection& section : elf.sections()) {
        if (section.type != SHT_NOTE) continue;
        if (const auto content = find(section.offset, section.size, section.alignment)) return content;
    }
    for (const ElfSegment& segment : elf.segments()) {
        if (segment.type != PT_NOTE) continue;
        if (const auto content = find(segment.offset, segment.size, segment.alignment)) return content;
    }
    return std::nullopt;
}

std::string elfBuildId(const Elf& elf) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    constexpr std::size_t kMaxBuildId = 64;
    std::string id;
    const std::optional<std::string_view> content = findElfNote(elf, "GNU", NT_GNU_BUILD_ID);
    if (!content || content->size() > kMaxBuildId) return id;
    for (const char c : *content) {
        const auto byte = static_cast<unsigned char>(c);
        id += {kDigits[byte >> 4U], kDigits[byte & 15U]};
    }
    return id;
}

std::optional<ElfPackageNote> elfPackageNote(const Elf& elf) {
    constexpr std::size_t kMaxJson = 65536;
    const std::optional<std::string_view> content = findElfNote(elf, "FDO", kPackageNote);
    if (!content || content->size() > kMaxJson) return std::nullopt;
    const std::string_view json = content->substr(0, content->find('\0'));
    if (extractValues(ValueFormat::kJson, json, std::nullopt, "").malformed) return std::nullopt;
    ElfPackageNote note;
    note.type = firstValue(json, "/type");
    note.os = firstValue(json, "/os");
    note.name = firstValue(json, "/name");
    note.version = firstValue(json, "/version");
    note.architecture = firstValue(json, "/architecture");
    return note;
}

}  // namespace zuksw
