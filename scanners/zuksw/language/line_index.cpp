#include "scanners/zuksw/language/line_index.h"

#include <algorithm>

namespace zuksw {

std::pair<std::size_t, std::size_t> LineIndex::locate(std::size_t offset) {
    if (starts_.empty()) {
        starts_.push_back(0);
        for (std::size_t i = text_.find('\n'); i != text_.npos; i = text_.find('\n', i + 1)) {
            starts_.push_back(i + 1);
        }
    }
    const auto after = std::upper_bound(starts_.begin(), starts_.end(), offset);
    const auto line = static_cast<std::size_t>(after - starts_.begin());
    return {line, offset - starts_[line - 1] + 1};
}

std::string LineIndex::describe(std::size_t offset) {
    const auto [line, column] = locate(offset);
    return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

std::string LineIndex::brief(std::size_t offset) {
    const auto [line, column] = locate(offset);
    return std::to_string(line) + ":" + std::to_string(column);
}

}  // namespace zuksw
