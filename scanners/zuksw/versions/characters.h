#pragma once

#include <string_view>

namespace zuksw {

// Version text is ASCII by every scheme's definition, so the locale must not have a say.
constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr char toLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
constexpr bool isLetter(char c) {
    return toLower(c) >= 'a' && toLower(c) <= 'z';
}
constexpr bool isAlphanumeric(char c) {
    return isDigit(c) || isLetter(c);
}
constexpr bool isSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/** Sign of a difference: -1, 0 or 1, whatever the size of `order`. */
constexpr int signOf(int order) {
    return (order > 0) - (order < 0);
}

/** Takes the longest prefix whose characters all satisfy `wanted` off `text` and returns it. */
template <typename Predicate>
std::string_view takeWhile(std::string_view& text, Predicate wanted) {
    std::size_t length = 0;
    while (length < text.size() && wanted(text[length])) ++length;
    const std::string_view taken = text.substr(0, length);
    text.remove_prefix(length);
    return taken;
}

/** `text` without white space at its ends. */
std::string_view trimSpace(std::string_view text);

/** Compares two runs of decimal digits as numbers of any length; an empty run is 0. */
int compareDigits(std::string_view a, std::string_view b);

/** Compares bytes, ASCII letters without case. */
int compareNoCase(std::string_view a, std::string_view b);

}  // namespace zuksw
