#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/shared/affix.h"

// Text as it is reported: UTF-8, XML characters only, no control characters, no blanks at either end, one
// space for each inner run of blanks.
std::string cleanText(std::string_view bytes);

// What is to be done to text before it can stand in XML.
enum class TextKind {
    Plain,    // nothing, as to most text
    Clean,    // characters that mean something to XML are to be escaped
    Unclean,  // perhaps cleanText changes it: it has blanks at an end, is not all ASCII, or is empty
};
TextKind kindOfText(std::string_view bytes);

// The parts of `text` between separators, empty ones included.
std::vector<std::string_view> split(std::string_view text, char separator);

// The lines of `text` without their line ends; a last empty one is left out.
std::vector<std::string_view> lines(std::string_view text);

// The words between blanks.
std::vector<std::string_view> words(std::string_view text);

// `text` without the blanks (space, tab, line ends) and NULs at its ends.
std::string_view trim(std::string_view text);

std::string toLower(std::string_view text);

// "2026-11-20" of seconds since 1970; empty outside the years 1 to 9999.
std::string utcDate(std::int64_t seconds);

// "2026-11-20T22:05:45Z" of seconds since 1970; empty outside the years 1 to 9999.
std::string utcTime(std::int64_t seconds);

std::string join(const std::vector<std::string>& items, std::string_view separator);
