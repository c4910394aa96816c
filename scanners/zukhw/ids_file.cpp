#include "scanners/zukhw/ids_file.h"

#include <algorithm>

#include "scanners/zukhw/text.h"

namespace {

constexpr std::string_view kGap = "  ";  // between a number and its name

struct Line {
    std::string_view name;
    std::string_view rest;  // from its end on
};

// The line of `text` that begins with `head`, the line end before it included.
Line findLine(std::string_view text, const std::string& head) {
    const std::size_t at = text.find(head);
    if (at == std::string_view::npos) return {};
    const std::size_t name = at + head.size();
    const std::size_t end = std::min(text.find('\n', name), text.size());
    return {trim(text.substr(name, end - name)), text.substr(end)};
}

bool isComment(std::string_view line) {
    return startsWith(line, "#");
}

bool belongsToBlock(std::string_view line) {
    return startsWith(line, "\t") || isComment(line);
}

// The lines at the head of `text`, which begins with a line end, that have two tabs.
std::string_view deeperLines(std::string_view text) {
    std::size_t end = 0;
    const auto goesOn = [&] {
        const std::string_view line = text.substr(std::min(end + 1, text.size()));
        return startsWith(line, "\t\t") || isComment(line);
    };
    while (goesOn()) end = std::min(text.find('\n', end + 1), text.size());
    return text.substr(0, end);
}

}  // namespace

// Nearly all lines are of devices: only the few thousand top lines are looked at.
IdsFile::IdsFile(std::string text) : text_(std::move(text)) {
    std::string_view rest(text_);
    while (!rest.empty()) {
        const std::size_t gap = rest.substr(0, rest.find('\n')).find(kGap);
        std::size_t end = rest.find('\n');
        while (end != std::string_view::npos && belongsToBlock(rest.substr(end + 1))) {
            end = rest.find('\n', end + 1);
        }
        end = std::min(end, rest.size());
        if (gap != std::string_view::npos) blocks_.push_back({rest.substr(0, gap), rest.substr(0, end)});
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    std::stable_sort(blocks_.begin(), blocks_.end(),
                     [](const Block& a, const Block& b) { return a.key < b.key; });
}

std::string_view IdsFile::block(std::string_view key) const {
    const auto before = [](const Block& block, std::string_view wanted) { return block.key < wanted; };
    const auto found = std::lower_bound(blocks_.begin(), blocks_.end(), key, before);
    return found == blocks_.end() || found->key != key ? std::string_view() : found->text;
}

std::string_view IdsFile::name(std::string_view key) const {
    const std::string_view text = block(key);
    return text.empty() ? text : trim(text.substr(key.size(), text.find('\n') - key.size()));
}

std::string_view IdsFile::name(std::string_view key, std::string_view second) const {
    return findLine(block(key), "\n\t" + std::string(second) + std::string(kGap)).name;
}

std::string_view IdsFile::name(std::string_view key, std::string_view second, std::string_view third) const {
    const Line line = findLine(block(key), "\n\t" + std::string(second) + std::string(kGap));
    return findLine(deeperLines(line.rest), "\n\t\t" + std::string(third) + std::string(kGap)).name;
}
