#include <algorithm>
#include <cctype>
#include <utility>

#include "scanners/zuksw/checks/object_of.h"
#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/evaluation/expand.h"
#include "scanners/zuksw/evaluation/match.h"
#include "scanners/zuksw/formats/elf_dynamic.h"
#include "scanners/zuksw/formats/elf_notes.h"
#include "scanners/zuksw/formats/go_build_info.h"
#include "scanners/zuksw/versions/characters.h"

namespace zuksw {
namespace {

// What the headers of a program, library or kernel module say. All that is given must hold.
class ElfCheck : public Check {
  public:
    explicit ElfCheck(ConditionReader& attributes);

    Cost cost() const override { return Cost::kHeader; }

  protected:
    void evaluate(const Row& row, const Context& context, Rows* out) const override;

  private:
    void readBuildInfo(ConditionReader& attributes);
    Answer accept(const Elf& elf, const Context& context, Row* row) const;
    Answer acceptDynamic(const Elf& elf, const Context& context, const Row& row) const;
    Answer acceptGo(const Elf& elf, const Context& context, Row* row) const;
    Answer acceptBuildId(const Elf& elf, const Row& row, const Context& context) const;
    Answer acceptNote(const Elf& elf, const Context& context, Row* row) const;

    std::optional<Slot> of_;
    std::optional<std::size_t> kind_;
    std::optional<Template> machine_;
    std::optional<GlobTemplate> soname_;
    std::optional<GlobTemplate> needed_;
    std::optional<Template> buildId_;
    std::optional<Template> section_;
    std::optional<GlobTemplate> goPath_;
    std::optional<Slot> goVersionSet_;
    std::optional<Template> goModule_;
    std::optional<Slot> goModuleSet_;
    std::optional<Template> noteName_;
    std::optional<Slot> noteVersionSet_;
};

ElfCheck::ElfCheck(ConditionReader& attributes) {
    attributes.require("of");
    of_ = attributes.object("of", Kind::kFile);
    kind_ = attributes.choice("kind", {"program", "library", "module"});
    machine_ = attributes.text("machine");
    soname_ = attributes.nameGlob("soname");
    needed_ = attributes.nameGlob("needed");
    buildId_ = attributes.text("buildId");
    section_ = attributes.text("section");
    readBuildInfo(attributes);
}

void ElfCheck::readBuildInfo(ConditionReader& attributes) {
    goPath_ = attributes.pathGlob("goPath", true);
    goVersionSet_ = attributes.binds("goVersionSet", Kind::kText);
    goModule_ = attributes.text("goModule");
    goModuleSet_ = attributes.binds("goModuleSet", Kind::kText);
    noteName_ = attributes.text("noteName");
    noteVersionSet_ = attributes.binds("noteVersionSet", Kind::kText);
    if (goModuleSet_ && !goModule_)
        attributes.report("'goModuleSet' belongs to 'goModule'; say which module");
}

// Whether one of the texts matches the glob.
template <typename Texts>
Answer acceptAnyOf(const GlobTemplate& glob, const Texts& texts, const Row& row, const Context& context) {
    const auto any = [&](const Glob& g) {
        return Answer::of(
            std::any_of(texts.begin(), texts.end(), [&](const auto& text) { return g.matches(text); }));
    };
    if (glob.fixed) return any(*glob.fixed);
    const Text text = expand(glob.text, row, context, quoteGlob);
    if (!text.isSet()) return Answer::missing(text);
    std::string error;
    const std::optional<Glob> parsed = Glob::parsePath(text.text, &error);
    return parsed ? any(*parsed) : Answer::no();
}

// Takes in one part of a conjunction; false when it fails.
bool join(const Answer& part, Answer* whole) {
    whole->causes |= part.causes;
    whole->holds = whole->holds && part.holds;
    return whole->holds;
}

Answer ElfCheck::acceptDynamic(const Elf& elf, const Context& context, const Row& row) const {
    Answer answer = Answer::yes();
    const ElfDynamic dynamic = readElfDynamic(elf);
    constexpr ElfKind kKinds[] = {ElfKind::kProgram, ElfKind::kLibrary, ElfKind::kModule};
    if (kind_ && elfKind(elf, dynamic) != kKinds[*kind_]) return Answer::no();
    const std::vector<std::string_view> soname(dynamic.soname.empty() ? 0 : 1, dynamic.soname);
    if (soname_ && !join(acceptAnyOf(*soname_, soname, row, context), &answer)) return answer;
    if (needed_) join(acceptAnyOf(*needed_, dynamic.needed, row, context), &answer);
    return answer;
}

Answer ElfCheck::acceptGo(const Elf& elf, const Context& context, Row* row) const {
    const std::optional<GoBuildInfo> info = readGoBuildInfo(elf);
    if (!info) return Answer::no();
    Answer answer = Answer::yes();
    const std::vector<std::string_view> path = {info->path};
    if (goPath_ && !join(acceptAnyOf(*goPath_, path, *row, context), &answer)) return answer;
    if (goVersionSet_ && !bindText(*goVersionSet_, std::string(info->goVersion), context, row))
        return Answer::no();
    if (!goModule_) return answer;
    const Text wanted = expand(*goModule_, *row, context);
    if (!wanted.isSet()) return Answer::missing(wanted);
    const auto& modules = info->dependencies;
    const auto module = std::find_if(modules.begin(), modules.end(),
                                     [&](const GoModule& m) { return m.path == wanted.text; });
    if (module == modules.end()) return Answer::no();
    const bool bound = !goModuleSet_ || bindText(*goModuleSet_, std::string(module->version), context, row);
    return bound ? answer : Answer::no();
}

Answer ElfCheck::acceptNote(const Elf& elf, const Context& context, Row* row) const {
    const std::optional<ElfPackageNote> note = elfPackageNote(elf);
    if (!note) return Answer::no();
    const Answer answer = noteName_ ? acceptText(*noteName_, note->name, *row, context) : Answer::yes();
    if (noteVersionSet_ && !bindText(*noteVersionSet_, note->version, context, row)) return Answer::no();
    return answer;
}

// Hex digits are the same in either case.
Answer ElfCheck::acceptBuildId(const Elf& elf, const Row& row, const Context& context) const {
    const Text wanted = expand(*buildId_, row, context);
    return wanted.isSet() ? Answer::of(compareNoCase(wanted.text, elfBuildId(elf)) == 0)
                          : Answer::missing(wanted);
}

Answer ElfCheck::accept(const Elf& elf, const Context& context, Row* row) const {
    Answer answer = Answer::yes();
    if (machine_ && !join(acceptText(*machine_, elf.machine(), *row, context), &answer)) return answer;
    if (section_) {
        const Text name = expand(*section_, *row, context);
        if (!join(name.isSet() ? Answer::of(elf.section(name.text) != nullptr) : Answer::missing(name),
                  &answer)) {
            return answer;
        }
    }
    const bool dynamic = kind_ || soname_ || needed_;
    if (dynamic && !join(acceptDynamic(elf, context, *row), &answer)) return answer;
    if (buildId_ && !join(acceptBuildId(elf, *row, context), &answer)) return answer;
    const bool go = goPath_ || goVersionSet_ || goModule_;
    if (go && !join(acceptGo(elf, context, row), &answer)) return answer;
    if (noteName_ || noteVersionSet_) join(acceptNote(elf, context, row), &answer);
    return answer;
}

void ElfCheck::evaluate(const Row& row, const Context& context, Rows* out) const {
    const ObjectOf<FileObject> file(row.at(*of_));
    if (file.causes != 0) undecided(row, file.causes, out);
    if (!file) return;
    const ElfFile opened = openElf(*file, context.machine);
    if (opened.causes != 0) return undecided(row, opened.causes, out);
    if (!opened.elf) return;
    Row found = row;
    const Answer answer = accept(*opened.elf, context, &found);
    if (opened.contents->changed()) return undecided(row, toCauses(Cause::kChanged), out);
    if (answer.isNo()) return;
    if (answer.causes != 0) return undecided(found, answer.causes, out);
    holds(std::move(found),
          {{"kind", "file"}, {"path", file->path()}, {"size", std::to_string(file->size())}}, out);
}

}  // namespace

std::unique_ptr<Check> makeElf(ConditionReader& attributes, DetectReader& /*reader*/) {
    return std::make_unique<ElfCheck>(attributes);
}

}  // namespace zuksw
