#include "cli/table.h"

#include <algorithm>
#include <numeric>
#include <string_view>

#include "cli/text.h"

namespace {

constexpr std::size_t kIndent = kColumnGap;
constexpr std::size_t kGap = kColumnGap;

std::wstring blanks(std::size_t count) {
    return std::wstring(count, L' ');
}

std::wstring cut(const std::wstring& text, std::size_t width) {
    if (columns(text) <= width) return text;
    return text.substr(0, fitting(text, width - 1)) + L'\u2026';
}

std::wstring cutBegin(const std::wstring& text, std::size_t width) {
    if (columns(text) <= width) return text;
    std::size_t begin = 1;
    while (begin < text.size() && columns(std::wstring_view(text).substr(begin)) > width - 1) ++begin;
    return L'\u2026' + text.substr(begin);
}

// The file's own name says most, and then where the path begins.
std::wstring cutPath(const std::wstring& text, std::size_t width) {
    if (columns(text) <= width) return text;
    const std::size_t slash = text.rfind(L'/');
    if (slash == std::wstring::npos) return cut(text, width);
    const std::wstring name = text.substr(slash);
    if (columns(name) >= width) return cutBegin(text, width);
    return text.substr(0, fitting(text, width - 1 - columns(name))) + L'\u2026' + name;
}

std::wstring padded(const std::wstring& text, std::size_t width, bool alignRight) {
    const std::wstring padding = blanks(width - columns(text));
    return alignRight ? padding + text : text + padding;
}

std::size_t widthOf(const Column& column, const Page& page) {
    const std::size_t width = widthOf(column);
    return page.clip ? std::min(width, (page.width - kIndent - kGap) / 2) : width;
}

// One line of the table: the text that `textOf` gives for each column.
template <typename TextOf>
std::wstring line(const std::vector<const Column*>& block, const std::vector<std::size_t>& widths,
                  TextOf textOf) {
    std::wstring out = blanks(kIndent);
    for (std::size_t i = 0; i < block.size(); ++i) {
        if (i > 0) out += blanks(kGap);
        const auto shorten = block[i]->isPath ? cutPath : cut;
        out += padded(shorten(textOf(*block[i]), widths[i]), widths[i], block[i]->alignRight);
    }
    out.erase(out.find_last_not_of(L' ') + 1);
    return out + L'\n';
}

std::wstring formatBlock(const std::vector<const Column*>& block, const std::vector<std::size_t>& widths) {
    std::wstring out = line(block, widths, [](const Column& column) { return column.title; });
    for (std::size_t row = 0; row < block.front()->cells.size(); ++row) {
        out += line(block, widths, [row](const Column& column) { return column.cells[row]; });
    }
    return out;
}

std::vector<std::size_t> naturalWidths(const std::vector<Column>& columns) {
    std::vector<std::size_t> widths;
    widths.reserve(columns.size());
    for (const Column& column : columns) widths.push_back(widthOf(column));
    return widths;
}

std::size_t lineWidth(const std::vector<std::size_t>& widths) {
    return std::accumulate(widths.begin(), widths.end(), kIndent + kGap * (widths.size() - 1));
}

// Takes one column after the other off the widest until they fit.
void fit(std::vector<std::size_t>& widths, const Page& page) {
    constexpr std::size_t kNarrowest = 4;
    for (std::size_t sum = lineWidth(widths); sum > page.width; --sum) {
        const auto widest = std::max_element(widths.begin(), widths.end());
        if (*widest <= kNarrowest) return;
        --*widest;
    }
}

// Where to break a text that is too long for its line, of which `most` characters fit: at the last blank
// among them, else after them.
std::size_t breakPoint(std::wstring_view text, std::size_t most) {
    const std::size_t blank = text.substr(0, most + 1).rfind(L' ');
    return blank == std::wstring_view::npos || blank == 0 ? most : blank;
}

}  // namespace

std::size_t widthOf(const Column& column) {
    std::size_t width = columns(column.title);
    for (const std::wstring& cell : column.cells) width = std::max(width, columns(cell));
    return width;
}

std::wstring wrapped(std::wstring_view text, std::size_t start, const Page& page) {
    if (!page.clip) return std::wstring(text);
    const std::size_t width = page.width > start + kGap ? page.width - start : kGap;
    std::wstring out;
    for (std::size_t most; (most = fitting(text, width)) < text.size();) {
        const std::size_t end = breakPoint(text, std::max<std::size_t>(most, 1));
        out.append(text.substr(0, end)).append(L"\n").append(blanks(start));
        text.remove_prefix(std::min(text.find_first_not_of(L' ', end), text.size()));
    }
    return out.append(text);
}

std::wstring formatColumns(const std::vector<Column>& columns, const Page& page) {
    std::wstring out;
    for (std::size_t next = 1; next <= columns.size();) {
        std::vector<const Column*> block = {&columns.front()};
        std::vector<std::size_t> widths = {widthOf(columns.front(), page)};
        std::size_t used = kIndent + widths.front();
        for (; next < columns.size(); ++next) {
            const std::size_t width = widthOf(columns[next], page);
            if (block.size() > 1 && used + kGap + width > page.width) break;
            block.push_back(&columns[next]);
            widths.push_back(width);
            used += kGap + width;
        }
        if (!out.empty()) out += L'\n';
        out += formatBlock(block, widths);
        if (next == columns.size()) break;
    }
    return out;
}

bool fits(const std::vector<Column>& columns, const Page& page) {
    return !page.clip || lineWidth(naturalWidths(columns)) <= page.width;
}

std::wstring formatFitted(const std::vector<Column>& columns, const Page& page) {
    std::vector<const Column*> block;
    block.reserve(columns.size());
    for (const Column& column : columns) block.push_back(&column);
    std::vector<std::size_t> widths = naturalWidths(columns);
    if (page.clip) fit(widths, page);
    return formatBlock(block, widths);
}

std::wstring formatList(const std::vector<std::pair<std::wstring, std::wstring>>& list, std::size_t indent,
                        const Page& page) {
    std::size_t nameWidth = 0;
    for (const auto& [name, value] : list) nameWidth = std::max(nameWidth, columns(name));
    if (page.clip) nameWidth = std::min(nameWidth, page.width / 2);

    std::wstring out;
    for (const auto& [name, value] : list) {
        const std::wstring start =
            blanks(indent) + padded(cut(name, nameWidth), nameWidth, false) + blanks(kGap);
        out += start + wrapped(value, indent + nameWidth + kGap, page);
        out.erase(out.find_last_not_of(L' ') + 1);
        out += L'\n';
    }
    return out;
}
