#include "scanners/zuksw/evaluation/context.h"

namespace zuksw {

bool Context::timeIsUp(Rows* rows) const {
    if (!machine.budget.isSpent()) return false;
    for (Row& row : *rows) row.undecide(toCauses(Cause::kTimeBudget));
    return true;
}

bool Context::tooMany(const Rows& rows) const {
    return rows.size() > machine.configuration.limits.maxRows;
}

}  // namespace zuksw
