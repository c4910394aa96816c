#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>

// Space, tab or carriage return. This and what is asked for every line of a database stands here to be
// inlined.
inline bool isTextBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

// Takes the first line off `text` and returns it without its line end.
inline std::string_view takeLine(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

// Takes the first word off `text`, and the blanks before it; empty when there is none.
std::string_view takeWord(std::string_view& text);

// `text` without blanks at its ends.
inline std::string_view trimBlanks(std::string_view text) {
    while (!text.empty() && isTextBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isTextBlank(text.back())) text.remove_suffix(1);
    return text;
}

// A decimal number and nothing else; no value when it is no number or does not fit.
std::optional<std::uint64_t> parseUnsigned(std::string_view text);

// The same for a time in seconds since 1970.
std::optional<std::int64_t> parseSeconds(std::string_view text);
