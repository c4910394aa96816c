#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "scanners/zuksw/language/pattern.h"
#include "scanners/zuksw/language/template.h"
#include "scanners/zuksw/versions/compare.h"

namespace zuksw {

/** A pattern as a signature writes it: references allowed, named groups bind. */
struct PatternTemplate {
    Template text;
    bool wholeText = false;                            // it must match all of the text, not just a part
    std::shared_ptr<const Pattern> fixed;              // when no scan is needed to know the text
    std::vector<std::pair<std::string, Slot>> groups;  // in the order of Pattern::groups()
};

/** eq, ne, lt, le, gt, ge and match, all of which must hold. */
struct Comparison {
    enum class Operator { kEq, kNe, kLt, kLe, kGt, kGe };

    bool empty() const { return bounds.empty() && !match; }

    std::vector<std::pair<Operator, Template>> bounds;
    std::optional<Scheme> scheme;  // as written; each condition has its own default
    std::optional<PatternTemplate> match;
};

}  // namespace zuksw
