#include <utility>

#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/evaluation/expand.h"
#include "scanners/zuksw/evaluation/match.h"

namespace zuksw {
namespace {

// Compares a text made of what is bound already.
class Test : public Check {
  public:
    explicit Test(ConditionReader& attributes) {
        attributes.require("value");
        value_ = attributes.text("value").value_or(Template());
        comparison_ = attributes.comparison();
        if (comparison_.empty())
            attributes.reportLack("it compares with nothing; add eq, ne, lt, le, gt, ge or match");
    }

    Cost cost() const override { return Cost::kFact; }

  protected:
    void evaluate(const Row& row, const Context& context, Rows* out) const override {
        const Text value = expand(value_, row, context);
        if (value.state == Text::State::kUnknown) undecided(row, value.causes, out);
        if (!value.isSet()) return;
        Row found = row;
        const Answer answer = compare(comparison_, value.text, Scheme::kGeneric, context, &found);
        if (answer.isNo()) return;
        if (answer.causes != 0) return undecided(found, answer.causes, out);
        out->push_back(std::move(found));
    }

  private:
    Template value_;
    Comparison comparison_;
};

}  // namespace

std::unique_ptr<Check> makeTest(ConditionReader& attributes, DetectReader& /*reader*/) {
    return std::make_unique<Test>(attributes);
}

}  // namespace zuksw
