#include "scanners/shared/packages/deb822.h"

#include <algorithm>

#include "scanners/shared/packages/text.h"

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

bool continues(std::string_view text) {
    return !text.empty() && isBlank(text.front());
}

// Known by the first character of nearly every line, or the second.
bool isBlankLine(std::string_view line) {
    for (const char c : line) {
        if (!isTextBlank(c)) return false;
    }
    return true;
}

std::string_view withoutLeadingBlanks(std::string_view text) {
    while (continues(text)) text.remove_prefix(1);
    if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
    return text;
}

// The length of the field's name at the start of a line; 0 when there is no field.
std::size_t fieldNameLength(std::string_view line) {
    std::size_t length = 0;
    while (length < line.size() && line[length] != ':' && !isBlank(line[length])) ++length;
    return length < line.size() && line[length] == ':' ? length : 0;
}

}  // namespace

Deb822Reader::Item Deb822Reader::next() {
    while (!rest_.empty()) {
        offset_ = text_.size() - rest_.size();
        const std::string_view line = takeLine(rest_);
        const bool blank = isBlankLine(line);
        if (blank && !inParagraph_) continue;
        inParagraph_ = !blank;
        if (blank) return Item::EndOfParagraph;
        name_ = line.substr(0, fieldNameLength(line));
        if (name_.empty()) return Item::BadLine;
        value_ = line.substr(name_.size() + 1);
        continuation_ = takeContinuation();
        return Item::Field;
    }
    offset_ = text_.size();
    if (!inParagraph_) return Item::End;
    inParagraph_ = false;
    return Item::EndOfParagraph;
}

std::string_view Deb822Reader::value() const {
    return trimBlanks(value_);
}

std::string_view Deb822Reader::untrimmedValue() const {
    return withoutLeadingBlanks(value_);
}

std::string_view Deb822Reader::takeContinuation() {
    const std::string_view begin = rest_;
    while (continues(rest_)) {
        std::string_view after = rest_;
        if (isBlankLine(takeLine(after))) break;
        rest_ = after;
    }
    return begin.substr(0, begin.size() - rest_.size());
}
