#include <utility>

#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/evaluation/context.h"
#include "scanners/zuksw/evaluation/match.h"

namespace zuksw {
namespace {

// One fact about the machine, compared or bound.
class System : public Check {
  public:
    explicit System(ConditionReader& attributes) {
        attributes.require("key");
        key_ = attributes.raw("key").value_or("");
        set_ = attributes.binds("set", Kind::kText);
        comparison_ = attributes.comparison();
        if (attributes.has("key") && !SystemFacts::isKey(key_)) {
            attributes.report(
                "key=\"" + key_ +
                "\": no such fact; write os. and a key of os-release in small letters, kernel.name, "
                "kernel.release, kernel.version, machine, hostname, libc.version, container or init");
        }
    }

    Cost cost() const override { return Cost::kFact; }

  protected:
    void evaluate(const Row& row, const Context& context, Rows* out) const override {
        const Text fact = context.machine.system.fact(key_);
        if (fact.state == Text::State::kUnknown) undecided(row, fact.causes, out);
        if (!fact.isSet()) return;
        Row found = row;
        const Answer answer = compare(comparison_, fact.text, Scheme::kGeneric, context, &found);
        if (answer.isNo()) return;
        if (set_ && !bindText(*set_, fact.text, context, &found)) return;
        if (answer.causes != 0) return undecided(found, answer.causes, out);
        holds(std::move(found), {{"kind", "system"}, {"key", key_}, {"value", fact.text}}, out);
    }

  private:
    std::string key_;
    std::optional<Slot> set_;
    Comparison comparison_;
};

}  // namespace

std::unique_ptr<Check> makeSystem(ConditionReader& attributes, DetectReader& /*reader*/) {
    return std::make_unique<System>(attributes);
}

}  // namespace zuksw
