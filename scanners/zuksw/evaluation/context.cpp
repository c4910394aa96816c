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

void Context::limitRows(Rows* rows) const {
    if (!tooMany(*rows)) return;
    const std::uint64_t limit = machine.configuration.limits.maxRows;
    event(EventCode::kRowsLimit, "more rows than limits/MaxRows; the rest is dropped");
    rows->erase(rows->begin() + static_cast<std::ptrdiff_t>(limit + 1), rows->end());
    rows->back().undecide(toCauses(Cause::kRowsLimit));
}

}  // namespace zuksw
