#include "scanners/zuksw/evaluation/check.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "scanners/zuksw/evaluation/context.h"

namespace zuksw {
namespace {

Causes allCauses(const Rows& rows) {
    Causes causes = 0;
    for (const Row& row : rows) causes |= row.causes();
    return causes;
}

void append(Rows rows, Rows* out) {
    std::move(rows.begin(), rows.end(), std::back_inserter(*out));
}

}  // namespace

void Check::undecided(const Row& row, Causes causes, Rows* out) const {
    Row copy = row;
    copy.undecide(causes);
    for (const Slot slot : names.binds) copy.bindUnknown(slot, causes);
    out->push_back(std::move(copy));
}

void Check::limitRows(const Row& row, const Context& context, Rows* rows) const {
    if (!context.tooMany(*rows)) return;
    context.event(EventCode::kRowsLimit, "more rows than limits/MaxRows; the rest is dropped");
    const auto limit = static_cast<std::ptrdiff_t>(context.machine.configuration.limits.maxRows);
    rows->erase(rows->begin() + limit, rows->end());
    undecided(row, toCauses(Cause::kRowsLimit), rows);
    // What is bound inside a group and not behind it counts among what the group uses.
    for (const Slot slot : names.uses) rows->back().bindUnknown(slot, toCauses(Cause::kRowsLimit));
}

void Check::holds(Row row, std::vector<std::pair<const char*, std::string>> evidence, Rows* out) const {
    row.addEvidence({position, std::move(evidence)});
    out->push_back(std::move(row));
}

void Check::bound(const Row& row, Rows found, Rows* out) const {
    const auto decided = static_cast<std::uint64_t>(
        std::count_if(found.begin(), found.end(), [](const Row& r) { return r.isDecided(); }));
    const bool complete = decided == found.size();
    if (max && decided > *max) return;
    if (decided < min && complete) return;
    if (decided >= min && (complete || !max)) {
        if (decided > 0) return append(std::move(found), out);
        out->push_back(row);
        return;
    }
    // Whatever the open questions turn out to be, the rows are at most these and those still unknown; when
    // none would do as well, the incoming row itself is what may hold.
    const Causes causes = allCauses(found);
    if (min == 0 && decided == 0) return undecided(row, causes, out);
    for (Row& r : found) r.undecide(causes);
    append(std::move(found), out);
}

void Check::apply(const Row& row, const Context& context, Rows* out) const {
    const std::size_t before = out->size();
    Row incoming = row;
    incoming.makeDecided();
    Rows found;
    evaluate(incoming, context, &found);
    bound(incoming, std::move(found), out);
    if (optional) {
        const auto begin = out->begin() + static_cast<std::ptrdiff_t>(before);
        const bool any = std::any_of(begin, out->end(), [](const Row& r) { return r.isDecided(); });
        if (!any) {
            out->erase(begin, out->end());
            out->push_back(std::move(incoming));
        }
    }
    if (row.isDecided()) return;
    for (std::size_t i = before; i < out->size(); ++i) (*out)[i].undecide(row.causes());
}

}  // namespace zuksw
