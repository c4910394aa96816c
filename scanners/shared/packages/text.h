#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// Takes the first line off `text` and returns it without its line end.
std::string_view takeLine(std::string_view& text);

// Takes the first word off `text`, and the blanks before it; empty when there is none.
std::string_view takeWord(std::string_view& text);

// `text` without blanks (space, tab, carriage return) at its ends.
std::string_view trimBlanks(std::string_view text);

// A decimal number and nothing else; no value when it is no number or does not fit.
std::optional<std::uint64_t> parseUnsigned(std::string_view text);

// The same for a time in seconds since 1970.
std::optional<std::int64_t> parseSeconds(std::string_view text);
