#include <utility>

#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/evaluation/expand.h"
#include "scanners/zuksw/evaluation/match.h"

namespace zuksw {
namespace {

// Software identification tags, each a row.
class Tag : public Check {
  public:
    explicit Tag(ConditionReader& attributes) {
        name_ = attributes.pathGlob("name", true);
        tagId_ = attributes.text("tagId");
        regid_ = attributes.text("regid");
        as_ = attributes.binds("as", Kind::kTag);
        comparison_ = attributes.comparison();
    }

    Cost cost() const override { return Cost::kCandidates; }
    void demand(std::vector<FileQuery>* queries) const override { queries->push_back(Tags::query()); }

  protected:
    void evaluate(const Row& row, const Context& context, Rows* out) const override {
        const Tags::Found& found = context.machine.tags.all(context.machine);
        for (const auto& tag : found.tags) {
            Row next = row;
            if (as_ && !next.bind(*as_, std::static_pointer_cast<const Object>(tag))) continue;
            const Answer answer = accept(*tag, context, &next);
            if (answer.isNo()) continue;
            if (answer.causes != 0) {
                undecided(next, answer.causes, out);
            } else {
                holds(std::move(next), {{"kind", "tag"}, {"path", tag->path}, {"tagId", tag->tagId}}, out);
            }
        }
        if (found.causes != 0) undecided(row, found.causes, out);
    }

  private:
    Answer accept(const TagObject& tag, const Context& context, Row* row) const {
        Causes causes = 0;
        const auto add = [&causes](const Answer& answer) {
            causes |= answer.causes;
            return !answer.isNo();
        };
        if (name_ && !add(acceptGlob(*name_, tag.name, *row, context))) return Answer::no();
        if (tagId_ && !add(acceptText(*tagId_, tag.tagId, *row, context))) return Answer::no();
        if (regid_ && !add(acceptText(*regid_, tag.regid, *row, context))) return Answer::no();
        if (!add(compare(comparison_, tag.version, Scheme::kGeneric, context, row))) return Answer::no();
        return Answer::unknown(causes);
    }

    std::optional<GlobTemplate> name_;
    std::optional<Template> tagId_;
    std::optional<Template> regid_;
    std::optional<Slot> as_;
    Comparison comparison_;
};

}  // namespace

std::unique_ptr<Check> makeTag(ConditionReader& attributes, DetectReader& /*reader*/) {
    return std::make_unique<Tag>(attributes);
}

}  // namespace zuksw
