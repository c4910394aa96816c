#include "cli/json.h"

#include "cli/field_kind.h"
#include "cli/json_text.h"
#include "cli/text.h"

namespace {

std::string jsonValue(const std::wstring& name, const std::wstring& value) {
    return valueKind(name, value) == FieldKind::Text ? quoted(value) : toUtf8(value);
}

std::string instanceAsJson(const Instance& instance) {
    std::vector<std::string> members;
    for (const auto& [name, value] : instance)
        members.push_back(quoted(name) + ": " + jsonValue(name, value));
    return bracketed('{', members, '}', 2);
}

}  // namespace

std::string inventoryAsJson(const std::vector<Group>& groups) {
    std::vector<std::string> members;
    for (const Group& group : groups) {
        std::vector<std::string> instances;
        for (const Instance& instance : group.instances) instances.push_back(instanceAsJson(instance));
        members.push_back(quoted(group.name) + ": " + bracketed('[', instances, ']', 1));
    }
    return bracketed('{', members, '}', 0) + "\n";
}

std::string groupListAsJson(const std::vector<Group>& groups) {
    std::vector<std::string> items;
    items.reserve(groups.size());
    for (const Group& group : groups) {
        items.push_back("{\"Number\": " + std::to_string(group.number) + ", \"Name\": " + quoted(group.name) +
                        "}");
    }
    return bracketed('[', items, ']', 0) + "\n";
}
