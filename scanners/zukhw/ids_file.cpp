#include "scanners/zukhw/ids_file.h"

#include <algorithm>

#include "scanners/zukhw/text.h"

namespace {

constexpr std::string_view kGap = "  ";  // between a number and its name
constexpr std::uint64_t kPiece = std::uint64_t{4} * 1024;
constexpr std::uint64_t kLongestPiece = std::uint64_t{16} * 1024;
constexpr std::uint64_t kLongest = std::uint64_t{64} * 1024 * 1024;  // of lists: one of more is none
constexpr std::size_t kKey = 15;  // more than the longest that is asked for, with tabs and gap

bool isHexDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// The order of the lines that are not below another: makers, classes, then what nobody asks for.
enum class Section { Makers, Classes, Rest };

Section sectionOf(std::string_view line) {
    if (startsWith(line, "C ")) return Section::Classes;
    const std::string_view number = line.substr(0, 4);
    return std::all_of(number.begin(), number.end(), isHexDigit) ? Section::Makers : Section::Rest;
}

bool standsBehind(std::string_view line, std::string_view key, std::size_t depth) {
    const Section ofLine = sectionOf(line), ofKey = sectionOf(key);
    if (depth == 0 && ofLine != ofKey) return ofLine > ofKey;
    return line.substr(0, key.size()) > key;
}

// Whether a line with that many tabs begins there. Comments may stand anywhere.
bool beginsLine(std::string_view text, std::size_t depth) {
    const std::size_t tabs = std::min(text.find_first_not_of('\t'), text.size());
    const char first = tabs < text.size() ? text[tabs] : '\n';
    return tabs == depth && first != '#' && first != '\n' && first != '\r';
}

}  // namespace

IdsFile::IdsFile(const RandomAccess& file) : file_(file), size_(file.size() <= kLongest ? file.size() : 0) {}

// Of the file from there on; shorter at its end.
bool IdsFile::readPiece(std::uint64_t offset, std::uint64_t length) {
    return file_.read(offset, static_cast<std::size_t>(std::min(length, size_ - offset)), &piece_);
}

// In pieces that become longer: the largest makers' parts have hundreds of kilobytes.
IdsFile::Line IdsFile::searchBehind(std::uint64_t from, std::uint64_t end, std::size_t depth) {
    std::uint64_t length = kPiece;
    for (std::uint64_t at = from; at < end && readPiece(at, length + kKey);) {
        const std::string_view piece(piece_);
        for (std::size_t lineEnd = piece.find('\n'); lineEnd < length;
             lineEnd = piece.find('\n', lineEnd + 1)) {
            const std::string_view line = piece.substr(lineEnd + 1);
            if (beginsLine(line, depth)) return {at + lineEnd + 1, std::string(line.substr(depth, kKey))};
        }
        at += length;
        length = std::min(2 * length, kLongestPiece);
    }
    return {size_, ""};
}

// The first line with that many tabs behind `from`; at the file's end when there is none. Hardly any
// part of the file is looked at twice.
const IdsFile::Line& IdsFile::lineBehind(std::uint64_t from, std::size_t depth) {
    const auto known = seen_.lower_bound({depth, from});
    const bool mayMeet = known != seen_.end() && known->first.first == depth;
    if (mayMeet && known->first.second == from) return known->second;
    Line line = searchBehind(from, mayMeet ? known->first.second : size_, depth);
    if (mayMeet && line.begin == size_) line = known->second;
    return seen_.emplace_hint(known, std::pair(depth, from), std::move(line))->second;
}

// That line of `lines` with the lines below it; empty when there is none.
IdsFile::Entry IdsFile::find(Lines lines, std::size_t depth, std::string_view key) {
    std::uint64_t low = lines.begin, high = lines.end;  // it begins between them
    while (high - low > kPiece) {
        const std::uint64_t middle = low + (high - low) / 2;
        const Line& line = lineBehind(middle, depth);
        if (line.begin >= high || standsBehind(line.key, key, depth)) {
            high = middle + 1;
        } else {
            low = line.begin;
        }
    }
    if (low == high || !readPiece(low, high - low + kPiece)) return {};
    piece_.insert(0, 1, '\n');
    const std::string head = '\n' + std::string(depth, '\t').append(key).append(kGap);
    const std::size_t at = piece_.find(head);
    const std::uint64_t begin = low + at;
    if (at == std::string::npos || begin >= high) return {};
    const std::string_view rest = std::string_view(piece_).substr(at + head.size());
    std::string name(trim(rest.substr(0, rest.find('\n'))));
    return {{begin, std::min(lineBehind(begin, depth).begin, lines.end)}, std::move(name)};
}

std::string IdsFile::name(std::initializer_list<std::string_view> keys) {
    Entry entry{{0, size_}, ""};
    std::size_t depth = 0;
    std::string path;
    for (const std::string_view key : keys) {
        path.append(1, '\n').append(key);
        auto known = found_.find(path);
        if (known == found_.end()) known = found_.emplace(path, find(entry.lines, depth, key)).first;
        entry = known->second;
        ++depth;
    }
    return entry.name;
}
