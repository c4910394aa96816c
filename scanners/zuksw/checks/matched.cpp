#include <utility>

#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/evaluation/context.h"
#include "scanners/zuksw/evaluation/outcome.h"
#include "scanners/zuksw/language/detect_reader.h"

namespace zuksw {
namespace {

// The results of another signature, each a row.
class Matched : public Check {
  public:
    Matched(ConditionReader& attributes, DetectReader& reader) {
        attributes.require("guid");
        guid_ = attributes.raw("guid").value_or("");
        as_ = attributes.binds("as", Kind::kMatched);
        if (!guid_.empty()) reader.addReference(guid_, attributes.element().offset);
        if (attributes.has("guid") && guid_.empty()) attributes.report("'guid' is empty; name a signature");
    }

    Cost cost() const override { return Cost::kFact; }

  protected:
    void evaluate(const Row& row, const Context& context, Rows* out) const override {
        const Outcomes& outcomes = *context.machine.outcomes;
        Causes causes = 0;
        for (const std::size_t signature : outcomes.signatures().withGuid(guid_)) {
            const Outcome& outcome = outcomes.of(signature);
            const bool valid = outcomes.signatures().signatures()[signature].valid;
            causes |= valid ? outcome.causes : toCauses(Cause::kSignature);
            for (const auto& result : outcome.results) {
                Row found = row;
                if (as_ && !found.bind(*as_, std::static_pointer_cast<const Object>(result))) continue;
                holds(std::move(found), {{"kind", "signature"}, {"guid", guid_}}, out);
            }
        }
        if (causes != 0) undecided(row, causes, out);
    }

  private:
    std::string guid_;
    std::optional<Slot> as_;
};

}  // namespace

std::unique_ptr<Check> makeMatched(ConditionReader& attributes, DetectReader& reader) {
    return std::make_unique<Matched>(attributes, reader);
}

}  // namespace zuksw
