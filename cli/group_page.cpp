#include "cli/group_page.h"

#include <algorithm>
#include <iterator>

#include "cli/column_choice.h"
#include "cli/field_kind.h"
#include "cli/table.h"
#include "cli/text.h"

namespace {

constexpr std::size_t kIndent = 2;

// The instance's value, or null when it has no such field.
const std::wstring* find(const Instance& instance, const std::wstring& name) {
    for (const auto& [field, value] : instance) {
        if (field == name) return &value;
    }
    return nullptr;
}

// The names of all fields. One that only some instances have comes behind the field it follows there.
std::vector<std::wstring> fieldNames(const std::vector<Instance>& instances) {
    std::vector<std::wstring> names;
    for (const Instance& instance : instances) {
        auto place = names.begin();
        for (const auto& [name, value] : instance) {
            const auto known = std::find(names.begin(), names.end(), name);
            place = std::next(known != names.end() ? known : names.insert(place, name));
        }
    }
    return names;
}

bool allAgree(const std::vector<Instance>& instances, const std::wstring& name) {
    const std::wstring* first = find(instances.front(), name);
    return first != nullptr && std::all_of(instances.begin(), instances.end(), [&](const Instance& instance) {
               const std::wstring* value = find(instance, name);
               return value != nullptr && *value == *first;
           });
}

Column makeColumn(const Group& group, const std::wstring& name) {
    Column column{printable(name), {}, fieldKind(group.name, name) == FieldKind::Number};
    for (const Instance& instance : group.instances) {
        const std::wstring* value = find(instance, name);
        column.cells.push_back(value == nullptr ? L"-" : printable(*value));
    }
    return column;
}

// A value for a list. On a terminal six lines of a long one are enough.
std::wstring listed(const std::wstring& value, const Page& page) {
    constexpr std::size_t kLines = 6;
    const std::wstring text = printable(value);
    const std::size_t end = page.clip ? fitting(text, kLines * page.width) : text.size();
    return end == text.size() ? text : text.substr(0, end) + L'\u2026';
}

// A terminal gets one table, of the columns that it has room for.
std::wstring formatChosen(const std::wstring& group, const std::vector<Column>& columns, const Page& page) {
    const ColumnChoice choice = chooseColumns(group, columns, page);
    std::wstring out = formatFitted(choice.shown, page);
    if (choice.left.empty()) return out;
    std::wstring left;
    for (const std::wstring& title : choice.left) left += (left.empty() ? L"" : L", ") + title;
    const std::wstring head = L"  not shown: ";
    return out + head + wrapped(left, head.size(), page) + L"\n";
}

std::wstring formatRows(const Group& group, const Page& page) {
    const std::vector<Instance>& instances = group.instances;
    std::vector<Column> differing;
    std::vector<std::pair<std::wstring, std::wstring>> common;
    for (const std::wstring& name : fieldNames(instances)) {
        // The first field tells the instances apart and stays.
        if (!differing.empty() && allAgree(instances, name)) {
            common.emplace_back(printable(name), listed(*find(instances.front(), name), page));
        } else {
            differing.push_back(makeColumn(group, name));
        }
    }
    std::wstring out = page.clip ? formatChosen(group.name, differing, page) : formatColumns(differing, page);
    if (!common.empty()) out += L"  all of them:\n" + formatList(common, 2 * kIndent, page);
    return out;
}

std::wstring formatInstance(const Instance& instance, const Page& page) {
    std::vector<std::pair<std::wstring, std::wstring>> list;
    for (const auto& [name, value] : instance) list.emplace_back(printable(name), listed(value, page));
    return formatList(list, kIndent, page);
}

std::wstring formatGroup(const Group& group, const Page& page) {
    if (group.instances.size() == 1) {
        return printable(group.name) + L"\n" + formatInstance(group.instances.front(), page);
    }
    return printable(group.name) + L" (" + std::to_wstring(group.instances.size()) + L")\n" +
           formatRows(group, page);
}

}  // namespace

std::wstring inventoryAsText(const std::vector<Group>& groups, const Page& page) {
    std::wstring out;
    std::wstring nothing;
    for (const Group& group : groups) {
        if (group.instances.empty()) {
            nothing += (nothing.empty() ? L"" : L", ") + printable(group.name);
        } else {
            out += (out.empty() ? L"" : L"\n") + formatGroup(group, page);
        }
    }
    if (nothing.empty()) return out;
    // A list of names is wrapped in a file, too.
    return out + (out.empty() ? L"" : L"\n") + L"Nothing found\n  " +
           wrapped(nothing, kIndent, {page.width, true}) + L"\n";
}

std::wstring groupListAsText(const std::vector<Group>& groups, const Page& page) {
    Column numbers{L"Number", {}, true};
    Column names{L"Name", {}, false};
    for (const Group& group : groups) {
        numbers.cells.push_back(std::to_wstring(group.number));
        names.cells.push_back(printable(group.name));
    }
    return formatColumns({numbers, names}, page);
}
