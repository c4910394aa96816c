#include <algorithm>

#include "scanners/zuksw/checks/group.h"
#include "scanners/zuksw/checks/table.h"

namespace zuksw {
namespace {

// Holds when its children, taken as an All, do not. Nothing that is bound inside is bound behind it.
class Not : public All {
  public:
    Not(ConditionReader& attributes, DetectReader& reader) : All(attributes, reader) { keepBindings(); }

  protected:
    void evaluate(const Row& row, const Context& context, Rows* out) const override {
        Rows rows;
        All::evaluate(row, context, &rows);
        Causes causes = 0;
        for (const Row& r : rows) {
            if (r.isDecided()) return;
            causes |= r.causes();
        }
        if (rows.empty()) {
            out->push_back(row);
        } else {
            undecided(row, causes, out);
        }
    }
};

}  // namespace

std::unique_ptr<Check> makeNot(ConditionReader& attributes, DetectReader& reader) {
    return std::make_unique<Not>(attributes, reader);
}

}  // namespace zuksw
