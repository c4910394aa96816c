#include "cli/json.h"

#include <cwchar>
#include <iterator>

#include "cli/field_kind.h"
#include "cli/text.h"

namespace {

std::wstring escaped(wchar_t character) {
    wchar_t text[8];
    std::swprintf(text, std::size(text), L"\\u%04x", static_cast<unsigned>(character));
    return text;
}

std::string quoted(const std::wstring& text) {
    std::wstring out = L"\"";
    for (const wchar_t character : text) {
        if (isUnsafe(character)) {
            out += escaped(character);  // the output may end on a terminal
        } else {
            if (character == L'"' || character == L'\\') out += L'\\';
            out += character;
        }
    }
    return toUtf8(out + L'"');
}

std::string jsonValue(const std::wstring& name, const std::wstring& value) {
    return valueKind(name, value) == FieldKind::Text ? quoted(value) : toUtf8(value);
}

// The items between brackets, one a line, indented by `depth` steps.
std::string bracketed(char open, const std::vector<std::string>& items, char close, std::size_t depth) {
    std::string out(1, open);
    const std::string newLine = "\n" + std::string(2 * depth, ' ');
    for (const std::string& item : items) {
        if (&item != &items.front()) out += ',';
        out.append(newLine).append("  ").append(item);
    }
    if (!items.empty()) out += newLine;
    return out + close;
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
