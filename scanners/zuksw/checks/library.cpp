#include <utility>

#include "scanners/zuksw/checks/object_of.h"
#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/evaluation/expand.h"
#include "scanners/zuksw/evaluation/match.h"

namespace zuksw {
namespace {

// The file that a library needed by an ELF file is loaded from.
class Library : public Check {
  public:
    explicit Library(ConditionReader& attributes) {
        for (const char* name : {"of", "name", "as"}) attributes.require(name);
        of_ = attributes.object("of", Kind::kFile);
        name_ = attributes.nameGlob("name");
        as_ = attributes.binds("as", Kind::kFile);
    }

    Cost cost() const override { return Cost::kHeader; }

  protected:
    void evaluate(const Row& row, const Context& context, Rows* out) const override;

  private:
    void find(const DiskFile& file, const Elf& elf, const Glob& name, const Row& row, const Context& context,
              Rows* out) const;
    std::shared_ptr<const DiskFile> fitting(const std::string& path, const Elf& wanted,
                                            Machine& machine) const;

    std::optional<Slot> of_;
    std::optional<GlobTemplate> name_;
    std::optional<Slot> as_;
};

// The file at the path, links followed, when it is for the same processor.
std::shared_ptr<const DiskFile> Library::fitting(const std::string& path, const Elf& wanted,
                                                 Machine& machine) const {
    const std::optional<std::string> real = machine.tree.resolve(
        path, [&](std::string_view directory) { return machine.territory.isPassable(directory); });
    const auto facts = real ? machine.tree.stat(*real) : std::nullopt;
    if (!facts || !S_ISREG(facts->st_mode)) return nullptr;
    auto file = std::make_shared<const DiskFile>(*real, *facts, *real == path ? std::string() : path);
    const ElfFile opened = openElf(*file, machine);
    const bool fits =
        opened.elf && opened.elf->is64() == wanted.is64() && opened.elf->machine() == wanted.machine();
    return fits ? file : nullptr;
}

void Library::find(const DiskFile& file, const Elf& elf, const Glob& name, const Row& row,
                   const Context& context, Rows* out) const {
    const ElfDynamic dynamic = readElfDynamic(elf);
    for (const std::string_view needed : dynamic.needed) {
        if (!name.matches(needed)) continue;
        std::shared_ptr<const DiskFile> library;
        for (const std::string& path :
             context.machine.libraries.candidates(needed, directoryOf(file.path()), elf, dynamic)) {
            library = fitting(path, elf, context.machine);
            if (library) break;
        }
        if (!library) {
            undecided(row, toCauses(Cause::kUnresolved), out);
            continue;
        }
        Row found = row;
        if (!found.bind(*as_, std::static_pointer_cast<const Object>(library))) continue;
        holds(std::move(found),
              {{"kind", "file"}, {"path", library->path()}, {"size", std::to_string(library->size())}}, out);
    }
}

void Library::evaluate(const Row& row, const Context& context, Rows* out) const {
    const ObjectOf<DiskFile> file(row.at(*of_));
    if (file.causes != 0) undecided(row, file.causes, out);
    if (!file) return;
    const ElfFile opened = openElf(*file, context.machine);
    if (opened.causes != 0) return undecided(row, opened.causes, out);
    if (!opened.elf) return;
    if (name_->fixed) return find(*file, *opened.elf, *name_->fixed, row, context, out);
    const Text text = expand(name_->text, row, context, quoteGlob);
    if (text.state == Text::State::kUnknown) undecided(row, text.causes, out);
    std::string error;
    const auto glob = text.isSet() ? Glob::parseName(text.text, &error) : std::nullopt;
    if (glob) find(*file, *opened.elf, *glob, row, context, out);
}

}  // namespace

std::unique_ptr<Check> makeLibrary(ConditionReader& attributes, DetectReader& /*reader*/) {
    return std::make_unique<Library>(attributes);
}

}  // namespace zuksw
