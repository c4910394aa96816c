#include "scanners/zuksw/files/elf_file.h"

#include "scanners/zuksw/evaluation/machine.h"
#include "scanners/zuksw/formats/elf_dynamic.h"
#include "scanners/zuksw/formats/elf_notes.h"

namespace zuksw {
namespace {

Text textOrUnset(std::string_view text) {
    return text.empty() ? Text() : Text::of(std::string(text));
}

}  // namespace

ElfFile openElf(const FileObject& file, Machine& machine) {
    if (file.size() > machine.configuration.content.maxFileSize) {
        machine.events.add(EventCode::kTooLarge, {}, "larger than content/MaxFileSize; not looked into",
                           file.path());
        return {nullptr, std::nullopt, toCauses(Cause::kTooLarge)};
    }
    const Causes refused = machine.takeBytes(0);
    if (refused != 0) return {nullptr, std::nullopt, refused};
    Opened opened = file.open(machine);
    if (!opened.contents) return {nullptr, std::nullopt, opened.causes};
    ElfFile result;
    result.elf = Elf::parse(opened.contents->bytes());
    if (opened.contents->changed()) result.causes = toCauses(Cause::kChanged);
    result.contents = std::move(opened.contents);
    return result;
}

ElfFacts readElfFacts(const FileObject& file, Machine& machine) {
    const ElfFile opened = openElf(file, machine);
    if (opened.causes != 0) {
        const Text unknown = Text::unknown(opened.causes);
        return {unknown, unknown, unknown, unknown, unknown};
    }
    if (!opened.elf) return {};
    const Elf& elf = *opened.elf;
    return {textOrUnset(readElfDynamic(elf).soname), textOrUnset(elfBuildId(elf)), textOrUnset(elf.machine()),
            textOrUnset(elf.className()), textOrUnset(elf.interpreter())};
}

}  // namespace zuksw
