#include "scanners/zuksw/evaluation/context.h"

namespace zuksw {

void Context::limitRows(Rows* rows) const {
    const std::uint64_t limit = machine.configuration.limits.maxRows;
    if (rows->size() <= limit) return;
    event(EventCode::kRowsLimit, "more rows than limits/MaxRows; the rest is dropped");
    rows->erase(rows->begin() + static_cast<std::ptrdiff_t>(limit + 1), rows->end());
    rows->back().undecide(toCauses(Cause::kRowsLimit));
}

}  // namespace zuksw
