#include <algorithm>
#include <map>
#include <queue>
#include <utility>

#include "scanners/zuksw/checks/group.h"
#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/evaluation/context.h"

namespace zuksw {
namespace {

using Children = std::vector<std::unique_ptr<Check>>;

// Puts children into order. Each name keeps how many of its binders are still to come; a child waits for
// every name it uses that somebody else is still to bind. Of those that bind one name, the ones to which it
// makes a difference whether it is bound already come last, and keep their order.
class Sorter {
  public:
    explicit Sorter(Children children) : children_(std::move(children)), waits_(children_.size()) {}

    Children run();

  private:
    struct Name {
        std::size_t pending = 0;  // children still to be placed that bind it
        std::vector<std::size_t> binders;
        std::vector<std::size_t> users;
    };
    using Key = std::pair<Cost, std::size_t>;

    static bool has(const std::vector<Slot>& slots, Slot slot) {
        return std::binary_search(slots.begin(), slots.end(), slot);
    }
    bool blocks(const Name& name, Slot slot, std::size_t child) const {
        return name.pending > (has(children_[child]->names.binds, slot) ? 1U : 0U);
    }
    void collect();
    void chain(const std::vector<std::size_t>& binders);
    void release(std::size_t child);
    void makeReady(std::size_t child) { ready_.push({children_[child]->cost(), child}); }
    std::size_t next();
    void place(std::size_t child);

    Children children_;
    std::vector<std::size_t> waits_;               // names and children that a child waits for
    std::vector<std::vector<std::size_t>> after_;  // children that wait for a child itself
    std::vector<bool> placed_;
    std::map<Slot, Name> names_;
    std::priority_queue<Key, std::vector<Key>, std::greater<>> ready_;
    std::size_t first_ = 0;  // no child before this one is left
};

void Sorter::collect() {
    placed_.assign(children_.size(), false);
    after_.resize(children_.size());
    for (std::size_t i = 0; i < children_.size(); ++i) {
        for (const Slot slot : children_[i]->names.binds) {
            ++names_[slot].pending;
            names_[slot].binders.push_back(i);
        }
        for (const Slot slot : children_[i]->names.uses) names_[slot].users.push_back(i);
    }
    for (const auto& [slot, name] : names_) {
        for (const std::size_t user : name.users) waits_[user] += blocks(name, slot, user) ? 1 : 0;
        chain(name.binders);
    }
    for (std::size_t i = 0; i < children_.size(); ++i) {
        if (waits_[i] == 0) makeReady(i);
    }
}

void Sorter::chain(const std::vector<std::size_t>& binders) {
    std::vector<std::size_t> before;  // those that the next ordered one has to wait for
    std::vector<std::size_t> ordered;
    for (const std::size_t child : binders)
        (children_[child]->isOrdered() ? ordered : before).push_back(child);
    for (const std::size_t child : ordered) {
        for (const std::size_t earlier : before) after_[earlier].push_back(child);
        waits_[child] += before.size();
        before = {child};
    }
}

void Sorter::release(std::size_t child) {
    if (--waits_[child] == 0) makeReady(child);
}

// Children that wait for each other go in the order in which they were written.
std::size_t Sorter::next() {
    while (!ready_.empty()) {
        const std::size_t child = ready_.top().second;
        ready_.pop();
        if (!placed_[child]) return child;
    }
    while (placed_[first_]) ++first_;
    return first_;
}

void Sorter::place(std::size_t child) {
    placed_[child] = true;
    for (const std::size_t next : after_[child]) release(next);
    for (const Slot slot : children_[child]->names.binds) {
        Name& name = names_[slot];
        for (const std::size_t user : name.users) {
            const bool before = blocks(name, slot, user);
            --name.pending;
            const bool after = blocks(name, slot, user);
            ++name.pending;
            if (before && !after) release(user);
        }
        --name.pending;
    }
}

Children Sorter::run() {
    collect();
    std::vector<std::size_t> order;
    while (order.size() < children_.size()) {
        order.push_back(next());
        place(order.back());
    }
    Children sorted;
    for (const std::size_t child : order) sorted.push_back(std::move(children_[child]));
    return sorted;
}

}  // namespace

All::All(ConditionReader& attributes, DetectReader& reader) : Group(attributes, reader) {
    exportBindings();
    if (children_.size() > 1) children_ = Sorter(std::move(children_)).run();
}

void All::step(std::size_t which, const Rows& rows, const Context& context, Rows* out) const {
    for (const Row& row : rows) {
        if (context.machine.budget.isSpent()) {
            out->push_back(row);
            out->back().undecide(toCauses(Cause::kTimeBudget));
        } else {
            children_[which]->apply(row, context, out);
        }
        if (context.tooMany(*out)) return;
    }
}

void All::evaluate(const Row& row, const Context& context, Rows* out) const {
    Rows rows = {row};
    for (std::size_t i = 0; i < steps() && !rows.empty(); ++i) {
        if (context.timeIsUp(&rows)) break;
        Rows next;
        step(i, rows, context, &next);
        rows = std::move(next);
        limitRows(row, context, &rows);
    }
    std::move(rows.begin(), rows.end(), std::back_inserter(*out));
}

std::unique_ptr<Check> makeAll(ConditionReader& attributes, DetectReader& reader) {
    return std::make_unique<All>(attributes, reader);
}

}  // namespace zuksw
