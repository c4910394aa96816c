#include <utility>

#include "scanners/zuksw/checks/object_of.h"
#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/evaluation/expand.h"
#include "scanners/zuksw/evaluation/match.h"

namespace zuksw {
namespace {

// Running processes, each a row.
class Process : public Check {
  public:
    explicit Process(ConditionReader& attributes) {
        name_ = attributes.nameGlob("name");
        path_ = attributes.pathGlob("path", false);
        exe_ = attributes.object("exe", Kind::kFile);
        arguments_ = attributes.pattern("argsMatch");
        as_ = attributes.binds("as", Kind::kProcess);
    }

    Cost cost() const override { return Cost::kFact; }
    bool asksForProcesses() const override { return true; }

  protected:
    void evaluate(const Row& row, const Context& context, Rows* out) const override {
        ProcessTable& table = context.machine.processes;
        if (table.isElsewhere()) return undecided(row, toCauses(Cause::kOtherMachine), out);
        if (!context.machine.configuration.processes.enabled) {
            return undecided(row, toCauses(Cause::kNotSearched), out);
        }
        if (exe_ && row.at(*exe_).state != Text::State::kSet) {
            if (row.at(*exe_).causes != 0) undecided(row, row.at(*exe_).causes, out);
            return;
        }
        for (const auto& process : table.taken()) {
            Row found = row;
            if (as_ && !found.bind(*as_, std::static_pointer_cast<const Object>(process))) continue;
            const Answer answer = accept(*process, context, &found);
            if (answer.isNo()) continue;
            if (answer.causes != 0) {
                undecided(found, answer.causes, out);
            } else {
                holds(std::move(found), {{"kind", "process"}, {"pid", process->pid}, {"name", process->name}},
                      out);
            }
        }
    }

  private:
    Answer accept(const ProcessObject& process, const Context& context, Row* row) const {
        Causes causes = 0;
        const auto add = [&causes](const Answer& answer) {
            causes |= answer.causes;
            return !answer.isNo();
        };
        if (name_ && !add(acceptGlob(name_->text, true, process.name, *row, context))) return Answer::no();
        if (exe_ && !add(acceptFile(process, *row))) return Answer::no();
        if (path_ && !process.exeKnown) {
            causes |= toCauses(Cause::kUnreadable);
        } else if (path_ && (process.exe.empty() ||
                             !add(acceptGlob(path_->text, false, process.exe.substr(1), *row, context)))) {
            return Answer::no();
        }
        if (arguments_) {
            const MatchResult match = matchText(*arguments_, process.arguments, *row, context);
            if (!match.text.isSet() && match.text.causes == 0) return Answer::no();
            causes |= match.text.causes;
            const bool capture = context.machine.configuration.processes.captureArguments;
            if (capture && !bindCaptures(*arguments_, match.captures, context, row)) return Answer::no();
        }
        return Answer::unknown(causes);
    }

    static Answer acceptGlob(const Template& glob, bool name, std::string_view text, const Row& row,
                             const Context& context) {
        const Text expanded = expand(glob, row, context, quoteGlob);
        if (!expanded.isSet()) return Answer::missing(expanded);
        std::string error;
        const auto parsed =
            name ? Glob::parseName(expanded.text, &error) : Glob::parsePath(expanded.text, &error);
        return Answer::of(parsed && parsed->matches(text));
    }

    Answer acceptFile(const ProcessObject& process, const Row& row) const {
        const ObjectOf<DiskFile> file(row.at(*exe_));
        if (!file) return Answer::no();
        if (!process.exeKnown) return Answer::unknown(toCauses(Cause::kUnreadable));
        return Answer::of(!process.exe.empty() && process.device == file->facts().st_dev &&
                          process.inode == file->facts().st_ino);
    }

    std::optional<GlobTemplate> name_;
    std::optional<GlobTemplate> path_;
    std::optional<Slot> exe_;
    std::optional<PatternTemplate> arguments_;
    std::optional<Slot> as_;
};

}  // namespace

std::unique_ptr<Check> makeProcess(ConditionReader& attributes, DetectReader& /*reader*/) {
    return std::make_unique<Process>(attributes);
}

}  // namespace zuksw
