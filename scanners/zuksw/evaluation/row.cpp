#include "scanners/zuksw/evaluation/row.h"

#include <algorithm>

namespace zuksw {

bool Row::bind(Slot slot, const std::string& text) {
    Value& value = values_[slot];
    if (value.state == Text::State::kSet) return !value.object && value.text == text;
    value = {Text::State::kSet, 0, text, nullptr};
    return true;
}

bool Row::bind(Slot slot, std::shared_ptr<const Object> object) {
    Value& value = values_[slot];
    if (value.state == Text::State::kSet)
        return value.object && value.object->identity() == object->identity();
    value = {Text::State::kSet, 0, {}, std::move(object)};
    return true;
}

void Row::bindUnknown(Slot slot, Causes causes) {
    Value& value = values_[slot];
    if (value.state == Text::State::kUnset) value.state = Text::State::kUnknown;
    if (value.state == Text::State::kUnknown) value.causes |= causes;
}

void Row::undecide(Causes causes) {
    decided_ = false;
    causes_ |= causes;
}

void Row::makeDecided() {
    decided_ = true;
    causes_ = 0;
}

void Row::addEvidence(Evidence evidence) {
    evidence_ = std::make_shared<const Link>(Link{std::move(evidence), std::move(evidence_)});
}

std::vector<Evidence> Row::evidence() const {
    std::vector<Evidence> items;
    for (const Link* link = evidence_.get(); link != nullptr; link = link->before.get()) {
        items.push_back(link->evidence);
    }
    std::reverse(items.begin(), items.end());
    std::stable_sort(items.begin(), items.end(),
                     [](const Evidence& a, const Evidence& b) { return a.position < b.position; });
    return items;
}

}  // namespace zuksw
