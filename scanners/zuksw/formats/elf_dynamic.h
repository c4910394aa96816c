#pragma once

#include <string_view>
#include <vector>

#include "scanners/zuksw/formats/elf.h"

namespace zuksw {

/** What the dynamic linker is told. Points into the file's bytes. */
struct ElfDynamic {
    std::string_view soname;
    std::vector<std::string_view> needed;
    std::string_view rpath;
    std::string_view runpath;
    bool isPie = false;  // says itself that it is a program
};

ElfDynamic readElfDynamic(const Elf& elf);

enum class ElfKind {
    kProgram,
    kLibrary,
    kModule,  // of the kernel
    kOther,   // object files, core dumps
};

ElfKind elfKind(const Elf& elf, const ElfDynamic& dynamic);

}  // namespace zuksw
