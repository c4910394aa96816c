#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scanners/zuksw/evaluation/context.h"
#include "scanners/zuksw/evaluation/row.h"
#include "scanners/zuksw/language/template.h"

namespace zuksw {

using Quote = std::string (*)(std::string_view);

/** The template's text inside Detect. Unset when a reference without a default is simply not bound, and when
 *  the text would be longer than Template::kMaxExpanded; unknown when one is missing because a question could
 *  not be decided, default or not. quote: what makes a substituted value literal, in a glob or a pattern. */
Text expand(const Template& text, const Row& row, const Context& context, Quote quote = nullptr);

/** The template's text in a report, where whatever is missing takes its default; nothing when it has none or
 * the text would be too long. */
std::optional<std::string> expandForReport(const Template& text, const Row& row, const Context& context);

}  // namespace zuksw
