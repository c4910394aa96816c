#include <algorithm>
#include <vector>

#include "scanners/zuksw/versions/characters.h"
#include "scanners/zuksw/versions/schemes.h"

namespace zuksw {

namespace {

struct Segment {
    std::string_view text;  // digits or letters; empty stands for the number 0
    bool isNumber() const { return text.empty() || isDigit(text.front()); }
};

bool isGemCharacter(char c) {
    return isAlphanumeric(c) || c == '.';
}
bool isPreReleaseCharacter(char c) {
    return isAlphanumeric(c) || c == '.' || c == '-';
}

// Points stand between characters, never at an end and never two in a row.
bool pointsSeparate(std::string_view text) {
    if (text.empty() || text.front() == '.' || text.back() == '.') return false;
    return text.find("..") == std::string_view::npos;
}

// digits{.alphanumerics}, then optionally a hyphen and a pre-release. The number is all digits up to its
// first point.
bool isCorrect(std::string_view text) {
    const std::string_view number = takeWhile(text, isGemCharacter);
    std::string_view first = number.substr(0, number.find('.'));
    takeWhile(first, isDigit);
    if (!first.empty() || !pointsSeparate(number)) return false;
    if (text.empty()) return true;
    if (text.front() != '-') return false;
    text.remove_prefix(1);
    return pointsSeparate(text) && std::all_of(text.begin(), text.end(), isPreReleaseCharacter);
}

// Zeros at the end of a part say nothing: 1.0 = 1, 1.0.rc1 = 1.rc1.
void dropTrailingZeros(std::vector<Segment>& segments, std::size_t partBegin) {
    const auto zero = [](const Segment& s) { return s.isNumber() && compareDigits(s.text, "") == 0; };
    while (segments.size() > partBegin && zero(segments.back())) segments.pop_back();
}

std::optional<std::vector<Segment>> parse(std::string_view text) {
    std::vector<Segment> segments;
    text = trimSpace(text);
    if (text.empty()) return segments;
    if (!isCorrect(text)) return std::nullopt;
    std::optional<std::size_t> preRelease;  // where the part with letters begins
    while (!text.empty()) {
        const char c = text.front();
        if (isDigit(c)) {
            segments.push_back({takeWhile(text, isDigit)});
            continue;
        }
        // A hyphen is another way of writing ".pre.".
        const std::string_view word = isLetter(c) ? takeWhile(text, isLetter) : c == '-' ? "pre" : "";
        if (!isLetter(c)) text.remove_prefix(1);
        if (word.empty()) continue;
        if (!preRelease) {
            dropTrailingZeros(segments, 0);
            preRelease = segments.size();
        }
        segments.push_back({word});
    }
    dropTrailingZeros(segments, preRelease.value_or(0));
    return segments;
}

int compareSegments(const Segment& a, const Segment& b) {
    if (a.isNumber() != b.isNumber()) return a.isNumber() ? 1 : -1;
    return a.isNumber() ? compareDigits(a.text, b.text) : signOf(a.text.compare(b.text));
}

}  // namespace

std::optional<int> compareGem(std::string_view a, std::string_view b) {
    const auto left = parse(a);
    const auto right = parse(b);
    if (!left || !right) return std::nullopt;
    for (std::size_t i = 0; i < std::max(left->size(), right->size()); ++i) {
        const int order = compareSegments(i < left->size() ? (*left)[i] : Segment(),
                                          i < right->size() ? (*right)[i] : Segment());
        if (order != 0) return order;
    }
    return 0;
}

}  // namespace zuksw
