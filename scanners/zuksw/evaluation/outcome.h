#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "scanners/zuksw/evaluation/row.h"
#include "scanners/zuksw/language/signature_set.h"

namespace zuksw {

/** One result of a signature, as an object for the signatures that refer to it. */
class ResultObject : public Object {
  public:
    Text property(std::string_view name, Machine& machine) const override;
    std::string identity() const override;

    std::string guid;
    std::string signatureName;
    std::vector<std::pair<std::string, std::string>> variables;  // in order of Report
    std::string metadata;                                        // the element, or nothing
};

/** What became of a signature. */
struct Outcome {
    std::vector<std::shared_ptr<const ResultObject>> results;
    Causes causes = 0;  // not 0: there may be more
};

/** What became of the signatures evaluated so far. */
class Outcomes {
  public:
    explicit Outcomes(const SignatureSet& set) : set_(set), outcomes_(set.signatures().size()) {}

    Outcome& of(std::size_t signature) { return outcomes_[signature]; }
    const Outcome& of(std::size_t signature) const { return outcomes_[signature]; }
    const SignatureSet& signatures() const { return set_; }

  private:
    const SignatureSet& set_;
    std::vector<Outcome> outcomes_;
};

}  // namespace zuksw
