#include "cli/software.h"

#include <algorithm>

namespace {

const std::wstring kNothing;

}  // namespace

const std::wstring& Software::value(const wchar_t* variable) const {
    const auto found = std::find_if(variables.begin(), variables.end(),
                                    [variable](const auto& entry) { return entry.first == variable; });
    return found == variables.end() ? kNothing : found->second;
}

const std::wstring& Software::place() const {
    if (const std::wstring& path = value(L"path"); !path.empty()) return path;
    const auto found = std::find_if(variables.begin(), variables.end(),
                                    [](const auto& entry) { return entry.second.rfind(L'/', 0) == 0; });
    return found == variables.end() ? kNothing : found->second;
}
