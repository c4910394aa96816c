#include "scanners/zuksw/formats/tree_path.h"

#include <algorithm>

#include "scanners/zuksw/formats/extractors.h"

namespace zuksw {

namespace {

// `~1` stands for a slash, `~0` for the tilde itself.
std::string unescape(std::string_view token) {
    std::string plain;
    for (std::size_t i = 0; i < token.size(); ++i) {
        if (token[i] != '~') {
            plain += token[i];
        } else {
            plain += token[++i] == '1' ? '/' : '~';
        }
    }
    return plain;
}

}  // namespace

std::string TreePath::problem(std::string_view pointer) {
    if (!pointer.empty() && pointer.front() != '/') return "a JSON Pointer begins with a slash";
    for (std::size_t i = 0; i < pointer.size(); ++i) {
        if (pointer[i] != '~') continue;
        const char next = i + 1 < pointer.size() ? pointer[i + 1] : '\0';
        if (next != '0' && next != '1') return "after ~ comes 0 (for ~) or 1 (for a slash)";
    }
    const auto depth = std::count(pointer.begin(), pointer.end(), '/');
    return depth > kMaxValueDepth ? "the pointer is longer than 64 steps" : "";
}

TreePath::TreePath(std::string_view pointer) {
    while (!pointer.empty()) {
        pointer.remove_prefix(1);
        const std::string_view token = pointer.substr(0, pointer.find('/'));
        pointer.remove_prefix(token.size());
        tokens_.push_back(unescape(token));
    }
}

bool TreePath::enter(bool isArray) {
    if (open_.size() == kMaxValueDepth) return false;
    Level level;
    level.isArray = isArray;
    level.matches = nextMatches();
    open_.push_back(level);
    return true;
}

void TreePath::member(std::string_view name) {
    const std::size_t step = open_.size() - 1;
    Level& level = open_.back();
    level.childMatches =
        level.matches && step < tokens_.size() && (tokens_[step] == "*" || tokens_[step] == name);
}

bool TreePath::atScalar() {
    return nextMatches() && open_.size() == tokens_.size();
}

// Whether the pointer leads to the value that begins now, or below it.
bool TreePath::nextMatches() {
    if (open_.empty()) return true;
    Level& level = open_.back();
    if (!level.isArray) return level.childMatches;
    const std::size_t step = open_.size() - 1;
    const std::size_t index = level.next++;
    if (!level.matches || step >= tokens_.size()) return false;
    return tokens_[step] == "*" || tokens_[step] == std::to_string(index);
}

}  // namespace zuksw
