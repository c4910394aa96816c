#include <algorithm>

#include "scanners/zuksw/checks/group.h"
#include "scanners/zuksw/checks/table.h"

namespace zuksw {
namespace {

// Holds when at least so many of its children do. Nothing that is bound inside is bound behind it.
class AtLeast : public Group {
  public:
    AtLeast(ConditionReader& attributes, DetectReader& reader)
        : Group(attributes, reader), count_(attributes.number("count").value_or(1)) {
        attributes.require("count");
        if (count_ == 0) attributes.report("'count' must be at least 1");
        if (count_ > children_.size() && !children_.empty()) {
            attributes.scope().advise(attributes.element().offset,
                                      "<AtLeast>: 'count' is more than the conditions in it; it never holds");
        }
        keepBindings();
    }

  protected:
    void evaluate(const Row& row, const Context& context, Rows* out) const override {
        std::size_t yes = 0;
        std::size_t maybe = 0;
        Causes causes = 0;
        for (const auto& child : children_) {
            Rows rows;
            child->apply(row, context, &rows);
            if (std::any_of(rows.begin(), rows.end(), [](const Row& r) { return r.isDecided(); })) {
                if (++yes >= count_) break;
            } else if (!rows.empty()) {
                ++maybe;
                for (const Row& r : rows) causes |= r.causes();
            }
        }
        if (yes >= count_) {
            out->push_back(row);
        } else if (yes + maybe >= count_) {
            undecided(row, causes, out);
        }
    }

  private:
    std::size_t count_;
};

}  // namespace

std::unique_ptr<Check> makeAtLeast(ConditionReader& attributes, DetectReader& reader) {
    return std::make_unique<AtLeast>(attributes, reader);
}

}  // namespace zuksw
