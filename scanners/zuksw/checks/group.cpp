#include "scanners/zuksw/checks/group.h"

#include <algorithm>

#include "scanners/zuksw/language/detect_reader.h"

namespace zuksw {
namespace {

void addAll(const std::vector<Slot>& from, std::vector<Slot>* to) {
    std::vector<Slot> merged;
    merged.reserve(from.size() + to->size());
    std::set_union(from.begin(), from.end(), to->begin(), to->end(), std::back_inserter(merged));
    *to = std::move(merged);
}

}  // namespace

Group::Group(ConditionReader& attributes, DetectReader& reader)
    : children_(reader.readChildren(attributes.element())) {
    // What stands there and is no condition has been reported.
    const auto& inside = attributes.element().children;
    const bool empty =
        std::all_of(inside.begin(), inside.end(), [](const Element* e) { return e->name.empty(); });
    if (empty) attributes.report("there is no condition in it; add one");
}

void Group::exportBindings() {
    for (const auto& child : children_) {
        addAll(child->names.binds, &names.binds);
        addAll(child->names.uses, &names.uses);
    }
}

void Group::keepBindings() {
    exportBindings();
    addAll(names.binds, &names.uses);
    names.binds.clear();
}

bool Group::isOrdered() const {
    return !isPlain() || std::any_of(children_.begin(), children_.end(),
                                     [](const auto& child) { return child->isOrdered(); });
}

Cost Group::cost() const {
    Cost most = Cost::kFact;
    for (const auto& child : children_) most = std::max(most, child->cost());
    return most;
}

bool Group::asksForProcesses() const {
    return std::any_of(children_.begin(), children_.end(),
                       [](const auto& child) { return child->asksForProcesses(); });
}

void Group::demand(std::vector<FileQuery>* queries) const {
    for (const auto& child : children_) child->demand(queries);
}

}  // namespace zuksw
