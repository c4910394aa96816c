#include "scanners/zukhw/ids_file.h"

#include <algorithm>

#include "scanners/zukhw/text.h"
#include "scanners/zukhw/text_pieces.h"

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

// Asked for every line of the file, which has tens of thousands.
bool belongsToBlock(char first) {
    return first == '\t' || first == '#';
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
IdsFile::IdsFile(const RandomAccess& file) : file_(file) {
    for (TextPieces pieces(file, "\n"); pieces.next();) addTopLines(pieces.text(), pieces.offset());
    if (!blocks_.empty()) blocks_.back().end = file.size();
}

void IdsFile::addTopLines(std::string_view text, std::uint64_t offset) {
    std::size_t end = 0;
    for (std::size_t begin = 0; begin < text.size(); begin = end + 1) {
        end = std::min(text.find('\n', begin), text.size());
        if (belongsToBlock(text[begin])) continue;
        if (!blocks_.empty()) blocks_.back().end = std::min(blocks_.back().end, offset + begin);
        const std::string_view line = text.substr(begin, end - begin);
        const std::size_t gap = line.find(kGap);
        if (gap != std::string_view::npos)
            blocks_.push_back({std::string(line.substr(0, gap)), offset + begin});
    }
}

std::string_view IdsFile::block(std::string_view key) {
    if (key == lastKey_) return lastText_;
    const auto isWanted = [&](const Block& block) { return block.key == key; };
    const auto found = std::find_if(blocks_.begin(), blocks_.end(), isWanted);
    if (found == blocks_.end()) return {};
    lastKey_ = key;
    file_.read(found->begin, static_cast<std::size_t>(found->end - found->begin), &lastText_);
    return lastText_;
}

std::string IdsFile::name(std::string_view key) {
    const std::string_view text = block(key);
    if (text.empty()) return "";
    return std::string(trim(text.substr(key.size(), text.find('\n') - key.size())));
}

std::string IdsFile::name(std::string_view key, std::string_view second) {
    return std::string(findLine(block(key), "\n\t" + std::string(second) + std::string(kGap)).name);
}

std::string IdsFile::name(std::string_view key, std::string_view second, std::string_view third) {
    const Line line = findLine(block(key), "\n\t" + std::string(second) + std::string(kGap));
    const std::string head = "\n\t\t" + std::string(third) + std::string(kGap);
    return std::string(findLine(deeperLines(line.rest), head).name);
}
