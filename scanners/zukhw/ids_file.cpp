#include "scanners/zukhw/ids_file.h"

#include <algorithm>
#include <cstring>

#include "scanners/zukhw/text.h"

namespace {

constexpr std::string_view kGap = "  ";  // between a number and its name

// Where the first line that begins with `head` starts. The lists have a megabyte and short lines, over which
// memmem goes ten times as fast as a search that stops at every line end.
std::size_t findLineStart(std::string_view text, const std::string& head) {
    if (startsWith(text, head)) return 0;
    const std::string line = '\n' + head;
    const void* found = ::memmem(text.data(), text.size(), line.data(), line.size());
    if (found == nullptr) return std::string_view::npos;
    return static_cast<std::size_t>(static_cast<const char*>(found) - text.data()) + 1;
}

// The name on the line that begins with `head`, among the lines of `text`, and where the line after it
// begins.
struct Line {
    std::string_view name;
    std::string_view rest;
};

Line findLine(std::string_view text, const std::string& head) {
    const std::size_t at = findLineStart(text, head);
    if (at == std::string_view::npos) return {};
    const std::size_t end = std::min(text.find('\n', at), text.size());
    return {trim(text.substr(at + head.size(), end - at - head.size())), text.substr(end)};
}

// The lines at the head of `text`, which begins with a line end, that are indented deeper than `tabs`.
std::string_view deeperLines(std::string_view text, std::size_t tabs) {
    std::size_t end = 0;
    while (end < text.size()) {
        const std::string_view line = text.substr(end + 1, text.find('\n', end + 1) - end - 1);
        const bool isDeeper = std::min(line.find_first_not_of('\t'), line.size()) > tabs;
        if (!isDeeper && !startsWith(line, "#")) break;
        end += line.size() + 1;
    }
    return text.substr(0, end);
}

}  // namespace

std::string_view IdsFile::block(const std::string& key) const {
    return deeperLines(findLine(text_, key + std::string(kGap)).rest, 0);
}

std::string_view IdsFile::name(const std::string& key) const {
    return findLine(text_, key + std::string(kGap)).name;
}

std::string_view IdsFile::name(const std::string& key, std::string_view second) const {
    return findLine(block(key), '\t' + std::string(second) + std::string(kGap)).name;
}

std::string_view IdsFile::name(const std::string& key, std::string_view second,
                               std::string_view third) const {
    const Line line = findLine(block(key), '\t' + std::string(second) + std::string(kGap));
    return findLine(deeperLines(line.rest, 1), "\t\t" + std::string(third) + std::string(kGap)).name;
}
