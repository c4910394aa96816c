#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "scanners/zuksw/evaluation/value.h"
#include "scanners/zuksw/language/scope.h"

namespace zuksw {

/** What a decided condition rested on: `<Item kind="file" path="..."/>`. */
struct Evidence {
    std::uint32_t position = 0;  // of the condition in Detect
    std::vector<std::pair<const char*, std::string>> attributes;
};

/** A set of bindings under which everything asked so far holds, or, undecided, may hold. Copies share their
 *  evidence. */
class Row {
  public:
    explicit Row(std::size_t slots) : values_(slots) {}

    const Value& at(Slot slot) const { return values_[slot]; }
    bool isDecided() const { return decided_; }
    Causes causes() const { return causes_; }

    /** Bind a name. False when it is bound to something else already: then the row does not hold. */
    bool bind(Slot slot, const std::string& text);
    bool bind(Slot slot, std::shared_ptr<const Object> object);
    /** Notes that a step which would bind the name could not be taken. */
    void bindUnknown(Slot slot, Causes causes);

    void undecide(Causes causes);
    /** As if nothing had been undecided so far. */
    void makeDecided();

    void addEvidence(Evidence evidence);
    /** In order of Detect. */
    std::vector<Evidence> evidence() const;

  private:
    struct Link {
        Evidence evidence;
        std::shared_ptr<const Link> before;
    };

    std::vector<Value> values_;
    std::shared_ptr<const Link> evidence_;
    Causes causes_ = 0;
    bool decided_ = true;
};

using Rows = std::vector<Row>;

}  // namespace zuksw
