#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zuksw {

/** A named group of a pattern: which bracket it is, counted from 1, and its name. */
struct PatternGroup {
    int index = 0;
    std::string name;
};

/** The named groups of a pattern that is plainly valid and small: every construct in it is known here,
 * nothing is counted beyond 100. Nothing for any other pattern, which may still be valid: ask the engine. A
 * file of many thousand signatures is checked this way in a fraction of the time that compiling its patterns
 * would take, and most of them are never run. */
std::optional<std::vector<PatternGroup>> plainPatternGroups(std::string_view text);

/** Whether the pattern needs a run of at least 3 plain bytes in whatever it matches. Without one a search has
 *  nothing to look for but the pattern itself. Errs on the side of yes. */
bool hasLiteralRun(std::string_view text);

/** The largest number in a counted repetition, 0 when there is none. */
unsigned largestRepetition(std::string_view text);

}  // namespace zuksw
