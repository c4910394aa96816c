#pragma once

#include <string>
#include <vector>

#include "scanners/zuksw/evaluation/context.h"
#include "scanners/zuksw/evaluation/outcome.h"
#include "scanners/zuksw/language/signature.h"

namespace zuksw {

/** Makes the results of a signature from the rows that Detect left: one for each place, or one for the
 * machine. Rows come in any order; results do not depend on it. */
Outcome makeOutcome(const Signature& signature, const Rows& rows, const Context& context);

}  // namespace zuksw
