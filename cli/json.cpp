#include "cli/json.h"

#include <string_view>

#include "cli/field_kind.h"
#include "cli/json_text.h"
#include "cli/text.h"

namespace {

// Names may be listed as numbers and still carry words ("N/A", "0042"): only a value of the right shape is
// taken for more than text.
std::string number(std::wstring_view value) {
    return isNumber(value) ? toUtf8(value) : quoted(value);
}

std::string flag(std::wstring_view value) {
    return value == L"true" || value == L"false" ? toUtf8(value) : quoted(value);
}

std::string list(FieldKind kind, std::wstring_view value) {
    std::string out;
    for (const std::wstring_view item : listItems(kind, value)) {
        out += out.empty() ? "[" : ", ";
        out += kind == FieldKind::NumberList ? number(item) : quoted(item);
    }
    return out + ']';
}

std::string jsonValue(FieldKind kind, std::wstring_view value) {
    switch (kind) {
        case FieldKind::Number:
            return number(value);
        case FieldKind::Flag:
            return flag(value);
        case FieldKind::Text:
            return quoted(value);
        default:
            return list(kind, value);
    }
}

std::string instanceAsJson(const std::wstring& group, const Instance& instance) {
    std::vector<std::string> members;
    for (const auto& [name, value] : instance)
        members.push_back(quoted(name) + ": " + jsonValue(fieldKind(group, name), value));
    return bracketed('{', members, '}', 2);
}

}  // namespace

std::string inventoryAsJson(const std::vector<Group>& groups) {
    std::vector<std::string> members;
    for (const Group& group : groups) {
        std::vector<std::string> instances;
        for (const Instance& instance : group.instances)
            instances.push_back(instanceAsJson(group.name, instance));
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
