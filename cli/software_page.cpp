#include "cli/software_page.h"

#include <algorithm>

#include "cli/table.h"
#include "cli/text.h"

namespace {

Column makeColumn(const wchar_t* title) {
    return {title, {}, false};
}

void add(Column& column, const std::wstring& text) {
    column.cells.push_back(text.empty() ? L"-" : printable(text));
}

// The variables that have no column of their own.
std::wstring others(const Software& software) {
    std::wstring text;
    for (const auto& [name, value] : software.variables) {
        const bool shown = name == L"version" || name == L"package" || value == software.place();
        if (shown || value.empty()) continue;
        if (!text.empty()) text += L", ";
        text.append(name).append(L"=").append(value);
    }
    return text;
}

struct WarningGroup {
    std::wstring code;
    std::uint64_t count = 0;
    std::vector<const Warning*> warnings;
};

std::vector<WarningGroup> grouped(const std::vector<Warning>& warnings) {
    std::vector<WarningGroup> groups;
    for (const Warning& warning : warnings) {
        auto group = std::find_if(groups.begin(), groups.end(),
                                  [&](const WarningGroup& known) { return known.code == warning.code; });
        if (group == groups.end()) group = groups.insert(group, {warning.code, 0, {}});
        group->count += warning.count;
        group->warnings.push_back(&warning);
    }
    return groups;
}

std::wstring quotedName(const std::wstring& guid, const SignatureNames& names) {
    const auto found = names.find(guid);
    return found == names.end() || found->second.empty() ? guid : L"'" + found->second + L"'";
}

// The text with each word that is a GUID replaced by the signature's name.
std::wstring withNames(const std::wstring& text, const SignatureNames& names) {
    std::wstring out;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(L' ', begin), text.size());
        out += (begin == 0 ? L"" : L" ") + quotedName(text.substr(begin, end - begin), names);
        begin = end + 1;
    }
    return out;
}

std::wstring warningLine(const Warning& warning, const SignatureNames& names) {
    std::wstring line = warning.guid.empty() ? L"" : quotedName(warning.guid, names) + L": ";
    line += withNames(warning.text, names);
    if (!warning.path.empty()) line += L": " + warning.path;
    if (warning.count > 1) line += L" (" + std::to_wstring(warning.count) + L")";
    return L"    " + printable(line) + L"\n";
}

std::wstring groupAsText(const WarningGroup& group, const SignatureNames& names) {
    constexpr std::size_t kMost = 10;
    std::wstring out = L"  " + printable(group.code) + L" (" + std::to_wstring(group.count) + L")\n";
    const std::size_t shown = std::min(group.warnings.size(), kMost);
    for (std::size_t i = 0; i < shown; ++i) out += warningLine(*group.warnings[i], names);
    const std::size_t left = group.warnings.size() - shown;
    return left == 0 ? out : out + L"    and " + std::to_wstring(left) + L" more: --json has them\n";
}

}  // namespace

std::wstring softwareAsText(const std::vector<Software>& found, const Page& page) {
    if (found.empty()) return L"Software\n  none that a signature describes\n";
    std::vector<Column> columns = {makeColumn(L"Name"), makeColumn(L"Version"), makeColumn(L"Place"),
                                   makeColumn(L"Package"), makeColumn(L"More")};
    columns[2].isPath = true;
    for (const Software& software : found) {
        add(columns[0], software.name);
        add(columns[1], software.value(L"version"));
        add(columns[2], software.place());
        add(columns[3], software.value(L"package"));
        columns[4].cells.push_back(printable(others(software)));
    }
    const auto isEmpty = [](const std::wstring& cell) { return cell.empty(); };
    const std::vector<std::wstring>& more = columns.back().cells;
    // It must not cost the others their room.
    if (std::all_of(more.begin(), more.end(), isEmpty) || !fits(columns, page)) columns.pop_back();
    return L"Software (" + std::to_wstring(found.size()) + L")\n" + formatFitted(columns, page);
}

std::wstring warningsAsText(const std::vector<Warning>& warnings, const SignatureNames& names) {
    if (warnings.empty()) return {};
    std::wstring out = L"zuk: warnings of the scan\n";
    for (const WarningGroup& group : grouped(warnings)) out += groupAsText(group, names);
    return out;
}
