#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/page.h"

struct Column {
    std::wstring title;
    std::vector<std::wstring> cells;
    bool alignRight;
    bool isPath = false;  // cut in the middle, so that the name of the file stays
};

// What stands before each column: the table's indentation, or the gap to the column before it.
constexpr std::size_t kColumnGap = 2;

// The columns of the page that a whole one takes.
std::size_t widthOf(const Column& column);

// Rows under titles. Columns that do not fit side by side go on below, the first one repeated; a cell
// wider than half a clipping page is cut. All texts must be printable.
std::wstring formatColumns(const std::vector<Column>& columns, const Page& page);

// Whether nothing must be cut for the columns to stand side by side.
bool fits(const std::vector<Column>& columns, const Page& page);

// Rows under titles, side by side. On a clipping page the widest columns are cut until all fit. All texts
// must be printable.
std::wstring formatFitted(const std::vector<Column>& columns, const Page& page);

// The text from column `start` on: on a clipping page wrapped, further lines indented as far. It must be
// printable.
std::wstring wrapped(std::wstring_view text, std::size_t start, const Page& page);

// One name and value a line. On a clipping page long values are wrapped. All texts must be printable.
std::wstring formatList(const std::vector<std::pair<std::wstring, std::wstring>>& list, std::size_t indent,
                        const Page& page);
