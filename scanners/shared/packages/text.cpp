#include "scanners/shared/packages/text.h"

#include <algorithm>
#include <charconv>

namespace {

template <typename Number>
std::optional<Number> parseNumber(std::string_view text) {
    Number number = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end) return std::nullopt;
    return number;
}

}  // namespace

std::string_view takeWord(std::string_view& text) {
    while (!text.empty() && isTextBlank(text.front())) text.remove_prefix(1);
    const auto end = std::find_if(text.begin(), text.end(), isTextBlank);
    const std::string_view word = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(word.size());
    return word;
}

std::optional<std::uint64_t> parseUnsigned(std::string_view text) {
    return parseNumber<std::uint64_t>(text);
}

std::optional<std::int64_t> parseSeconds(std::string_view text) {
    return parseNumber<std::int64_t>(text);
}
