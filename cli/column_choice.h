#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/page.h"
#include "cli/table.h"

struct ColumnChoice {
    std::vector<Column> shown;
    std::vector<std::wstring> left;  // titles of those that found no room
};

// The fields of a group that tell its instances apart and are asked for most, in this order; empty when there
// is no preference.
std::vector<std::wstring_view> preferredColumns(std::wstring_view group);

// The columns of a group's table that stand side by side on a page, the ones that tell most first.
ColumnChoice chooseColumns(const std::wstring& group, std::vector<Column> columns, const Page& page);
