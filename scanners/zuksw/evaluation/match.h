#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/zuksw/evaluation/answer.h"
#include "scanners/zuksw/evaluation/context.h"
#include "scanners/zuksw/evaluation/row.h"
#include "scanners/zuksw/language/comparison.h"
#include "scanners/zuksw/language/condition_reader.h"

namespace zuksw {

/** What the named groups of a pattern caught, in their order; nothing for a group that took no part. */
using Captures = std::vector<std::optional<std::string>>;

/** A pattern with its references replaced; null, and *state says why, when one of them is missing. */
std::shared_ptr<const Pattern> resolvePattern(const PatternTemplate& pattern, const Row& row,
                                              const Context& context, Text* state);

struct MatchResult {
    Text text;  // the matched part; unset: no match; unknown: a reference is missing
    Captures captures;
    std::vector<std::string> brackets;  // what every bracket caught, [0] all
};

/** Searches the pattern in a text. */
MatchResult matchText(const PatternTemplate& pattern, std::string_view text, const Row& row,
                      const Context& context);

/** Binds what the groups caught, cut to content/MaxCapture. False when a name is bound to something else. */
bool bindCaptures(const PatternTemplate& pattern, const Captures& captures, const Context& context, Row* row);

/** Binds a text, cut to content/MaxCapture. */
bool bindText(Slot slot, std::string text, const Context& context, Row* row);

/** Whether the text matches the glob, or is the one wanted, with references replaced. */
Answer acceptGlob(const GlobTemplate& glob, std::string_view text, const Row& row, const Context& context);
Answer acceptText(const Template& wanted, std::string_view text, const Row& row, const Context& context);

/** Whether all parts of the comparison hold for `value`; binds what `match` captures. */
Answer compare(const Comparison& comparison, const std::string& value, Scheme defaultScheme,
               const Context& context, Row* row);

}  // namespace zuksw
