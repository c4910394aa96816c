// Everything that is read from an ELF file is read without harm, and points into the file.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/zuksw/formats/elf_dynamic.h"
#include "scanners/zuksw/formats/elf_notes.h"
#include "scanners/zuksw/formats/go_build_info.h"

namespace {

std::size_t total = 0;

// Touches every byte, so that a text outside of the file is seen.
void touch(std::string_view text) {
    for (const char c : text) total += static_cast<unsigned char>(c);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view file(reinterpret_cast<const char*>(data), size);
    const std::optional<zuksw::Elf> elf = zuksw::Elf::parse(file);
    if (!elf) return 0;
    const zuksw::ElfDynamic dynamic = zuksw::readElfDynamic(*elf);
    for (const std::string_view needed : dynamic.needed) touch(needed);
    for (const std::string_view text : {dynamic.soname, dynamic.rpath, dynamic.runpath, elf->interpreter()})
        touch(text);
    for (const zuksw::ElfSection& section : elf->sections()) touch(section.name);
    if (const auto bytes = elf->sectionBytes(".rodata")) touch(*bytes);
    if (elf->machine().empty() || zuksw::elfBuildId(*elf).size() % 2 != 0) std::abort();
    static_cast<void>(zuksw::elfKind(*elf, dynamic));
    static_cast<void>(zuksw::elfPackageNote(*elf));
    if (const auto go = zuksw::readGoBuildInfo(*elf)) {
        touch(go->path);
        for (const zuksw::GoModule& module : go->dependencies) touch(module.version);
    }
    return 0;
}
