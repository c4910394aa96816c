#include "scanners/zuksw/language/detect_reader.h"

#include <algorithm>
#include <utility>

#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/language/suggestion.h"

namespace zuksw {
namespace {

constexpr std::uint32_t kMaxConditions = 10'000;

void sortUnique(std::vector<Slot>* slots) {
    std::sort(slots->begin(), slots->end());
    slots->erase(std::unique(slots->begin(), slots->end()), slots->end());
}

void readRowAttributes(ConditionReader& attributes, Check* check) {
    check->optional = attributes.yesNo("optional").value_or(false);
    check->min = attributes.number("min").value_or(1);
    check->max = attributes.number("max");
    if (check->max && *check->max < check->min) {
        attributes.report("'max' is smaller than 'min' (which is 1 when not given); no count fits both");
    }
}

std::string unknownElement(std::string_view name) {
    std::vector<std::string_view> words;
    for (const CheckKind& kind : checkKinds()) words.push_back(kind.element);
    return "<" + std::string(name) + "> is no condition; " + suggest(name, words);
}

}  // namespace

std::unique_ptr<Check> DetectReader::readDetect(const Element& element) {
    return read(element, "All");
}

std::unique_ptr<Check> DetectReader::read(const Element& element, std::string_view kindName) {
    const CheckKind* kind = findCheckKind(kindName);
    if (kind == nullptr) {
        scope_->report(element.offset, unknownElement(element.name));
        return nullptr;
    }
    if (position_ == kMaxConditions)
        scope_->report(element.offset, "more than 10000 conditions; split the signature");
    Scope::Names names;
    Scope::Names* outer = scope_->track(&names);
    const std::uint32_t position = position_++;
    ConditionReader attributes(element, scope_, patterns_);
    std::unique_ptr<Check> check = kind->make(attributes, *this);
    if (kind->hasRowAttributes) readRowAttributes(attributes, check.get());
    attributes.finish();
    if (!kind->hasChildren && !element.children.empty() && !readChildren(element).empty()) {
        attributes.report("this condition holds no other; move what is inside behind it");
    }
    scope_->track(outer);
    sortUnique(&names.binds);
    sortUnique(&names.uses);
    // A group has set its names from those of its children.
    if (!kind->hasChildren) check->names = std::move(names);
    check->position = position;
    return check;
}

std::vector<std::unique_ptr<Check>> DetectReader::readChildren(const Element& element) {
    std::vector<std::unique_ptr<Check>> checks;
    for (const Element* child : element.children) {
        if (child->name.empty()) {
            if (!isBlank(child->text)) scope_->report(child->offset, "text between conditions; remove it");
            continue;
        }
        std::unique_ptr<Check> check = read(*child, child->name);
        if (check) checks.push_back(std::move(check));
    }
    return checks;
}

}  // namespace zuksw
