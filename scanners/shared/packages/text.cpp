#include "scanners/shared/packages/text.h"

#include <algorithm>
#include <charconv>

namespace {

constexpr std::string_view kBlanks = " \t\r";

template <typename Number>
std::optional<Number> parseNumber(std::string_view text) {
    Number number = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end) return std::nullopt;
    return number;
}

}  // namespace

std::string_view takeLine(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

std::string_view takeWord(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    const std::string_view word = text.substr(0, text.find_first_of(kBlanks));
    text.remove_prefix(word.size());
    return word;
}

std::string_view trimBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

std::optional<std::uint64_t> parseUnsigned(std::string_view text) {
    return parseNumber<std::uint64_t>(text);
}

std::optional<std::int64_t> parseSeconds(std::string_view text) {
    return parseNumber<std::int64_t>(text);
}
