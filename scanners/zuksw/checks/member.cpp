#include <utility>

#include "scanners/zuksw/checks/object_of.h"
#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/evaluation/expand.h"
#include "scanners/zuksw/files/member_file.h"

namespace zuksw {
namespace {

// Members of an archive, each a row.
class Member : public Check {
  public:
    explicit Member(ConditionReader& attributes) {
        for (const char* name : {"of", "path", "as"}) attributes.require(name);
        of_ = attributes.object("of", Kind::kFile);
        path_ = attributes.pathGlob("path", true);
        as_ = attributes.binds("as", Kind::kFile);
    }

    Cost cost() const override { return Cost::kArchive; }

  protected:
    void evaluate(const Row& row, const Context& context, Rows* out) const override {
        const ObjectOf<FileObject> archive(row.at(*of_));
        if (archive.causes != 0) undecided(row, archive.causes, out);
        if (!archive) return;
        std::optional<Glob> glob = path_->fixed;
        if (!glob) {
            const Text text = expand(path_->text, row, context, quoteGlob);
            if (text.state == Text::State::kUnknown) undecided(row, text.causes, out);
            std::string error;
            if (text.isSet()) glob = Glob::parsePath(text.text, &error);
        }
        if (!glob) return;
        const auto wanted = [&](std::string_view name) { return glob->matches(name); };
        const FoundMembers found = findMembers(archive.pointer, wanted, context.machine);
        for (const auto& member : found.members) {
            Row next = row;
            if (!next.bind(*as_, std::static_pointer_cast<const Object>(member))) continue;
            holds(std::move(next),
                  {{"kind", "member"}, {"path", member->path()}, {"size", std::to_string(member->size())}},
                  out);
        }
        if (found.causes != 0) undecided(row, found.causes, out);
        limitRows(row, context, out);
    }

  private:
    std::optional<Slot> of_;
    std::optional<GlobTemplate> path_;
    std::optional<Slot> as_;
};

}  // namespace

std::unique_ptr<Check> makeMember(ConditionReader& attributes, DetectReader& /*reader*/) {
    return std::make_unique<Member>(attributes);
}

}  // namespace zuksw
