#include <algorithm>

#include "scanners/zuksw/checks/group.h"
#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/evaluation/context.h"

namespace zuksw {
namespace {

// The rows of all children together, or of the first child that has a decided one.
class Any : public Group {
  public:
    Any(ConditionReader& attributes, DetectReader& reader)
        : Group(attributes, reader), first_(attributes.yesNo("first").value_or(false)) {
        exportBindings();
    }

    bool isOrdered() const override { return first_ || Group::isOrdered(); }

  protected:
    void evaluate(const Row& row, const Context& context, Rows* out) const override {
        if (first_) return evaluateFirst(row, context, out);
        for (const auto& child : children_) child->apply(row, context, out);
        limitRows(row, context, out);
    }

  private:
    void evaluateFirst(const Row& row, const Context& context, Rows* out) const {
        Rows undecided;
        for (const auto& child : children_) {
            Rows rows;
            child->apply(row, context, &rows);
            const auto decided =
                std::stable_partition(rows.begin(), rows.end(), [](const Row& r) { return r.isDecided(); });
            if (decided != rows.begin()) {
                out->insert(out->end(), rows.begin(), decided);
                return;
            }
            undecided.insert(undecided.end(), rows.begin(), rows.end());
        }
        out->insert(out->end(), undecided.begin(), undecided.end());
    }

    bool first_;
};

}  // namespace

std::unique_ptr<Check> makeAny(ConditionReader& attributes, DetectReader& reader) {
    return std::make_unique<Any>(attributes, reader);
}

}  // namespace zuksw
