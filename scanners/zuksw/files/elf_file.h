#pragma once

#include <memory>
#include <optional>
#include <string>

#include "scanners/zuksw/evaluation/value.h"
#include "scanners/zuksw/files/contents.h"
#include "scanners/zuksw/formats/elf.h"

namespace zuksw {

class FileObject;

/** A file opened as ELF. `elf` points into `contents`. */
struct ElfFile {
    std::shared_ptr<const Contents> contents;
    std::optional<Elf> elf;  // nothing: no ELF file, or not there any more
    Causes causes = 0;       // not 0: it could not be found out
};

ElfFile openElf(const FileObject& file, Machine& machine);

/** What the properties elf.* of a file say. */
struct ElfFacts {
    Text soname, buildId, machine, className, interpreter;
};

ElfFacts readElfFacts(const FileObject& file, Machine& machine);

}  // namespace zuksw
