#include "cli/software_json.h"

#include "cli/json_text.h"

namespace {

constexpr std::size_t kDepthOfItems = 2;

std::string member(std::wstring_view name, const std::string& json) {
    return quoted(name) + ": " + json;
}

std::string asJson(const Software& software) {
    std::vector<std::string> variables;
    for (const auto& [name, value] : software.variables) variables.push_back(member(name, quoted(value)));
    const std::vector<std::string> members = {
        member(L"guid", quoted(software.guid)),
        member(L"name", quoted(software.name)),
        member(L"variables", bracketed('{', variables, '}', kDepthOfItems + 1)),
        member(L"metadata", quoted(software.metadata)),
    };
    return bracketed('{', members, '}', kDepthOfItems);
}

std::string asJson(const Warning& warning) {
    std::vector<std::string> members = {
        member(L"code", quoted(warning.code)),
        member(L"severity", quoted(warning.severity)),
        member(L"count", std::to_string(warning.count)),
    };
    if (!warning.guid.empty()) members.push_back(member(L"guid", quoted(warning.guid)));
    if (!warning.path.empty()) members.push_back(member(L"path", quoted(warning.path)));
    members.push_back(member(L"text", quoted(warning.text)));
    return bracketed('{', members, '}', kDepthOfItems);
}

template <typename Item>
std::string arrayOf(const std::vector<Item>& items) {
    std::vector<std::string> texts;
    texts.reserve(items.size());
    for (const Item& item : items) texts.push_back(asJson(item));
    return bracketed('[', texts, ']', 1);
}

}  // namespace

std::string softwareAsJson(const std::vector<Software>& found, const std::vector<Warning>& warnings) {
    return bracketed('{', {member(L"results", arrayOf(found)), member(L"warnings", arrayOf(warnings))}, '}',
                     0) +
           "\n";
}
