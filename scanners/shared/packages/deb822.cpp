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

std::string_view withoutLeadingBlanks(std::string_view text) {
    while (continues(text)) text.remove_prefix(1);
    if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
    return text;
}

// The length of the field's name at the start of a line; 0 when there is no field.
std::size_t fieldNameLength(std::string_view line) {
    const auto ends = [](char c) { return c == ':' || isBlank(c); };
    const auto* const end = std::find_if(line.begin(), line.end(), ends);
    return end != line.end() && *end == ':' ? static_cast<std::size_t>(end - line.begin()) : 0;
}

}  // namespace

Deb822Reader::Item Deb822Reader::next() {
    while (!rest_.empty()) {
        offset_ = text_.size() - rest_.size();
        const std::string_view line = takeLine(rest_);
        const bool blank = trimBlanks(line).empty();
        if (blank && !inParagraph_) continue;
        inParagraph_ = !blank;
        if (blank) return Item::EndOfParagraph;
        name_ = line.substr(0, fieldNameLength(line));
        if (name_.empty()) return Item::BadLine;
        value_ = withoutLeadingBlanks(line.substr(name_.size() + 1));
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

std::string_view Deb822Reader::takeContinuation() {
    const std::string_view begin = rest_;
    while (continues(rest_)) {
        std::string_view after = rest_;
        if (trimBlanks(takeLine(after)).empty()) break;
        rest_ = after;
    }
    return begin.substr(0, begin.size() - rest_.size());
}
