#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// True for what must not reach a terminal as it is: control characters, and those that turn the direction
// of the text around them.
bool isUnsafe(wchar_t character);

// The text with every unsafe character, and everything that is no character, replaced by U+FFFD.
std::wstring printable(std::wstring_view text);

// UTF-8. What is no character becomes U+FFFD.
std::string toUtf8(std::wstring_view text);

// From the current locale's encoding. Bytes that are not valid in it become U+FFFD.
std::wstring fromLocale(const char* text);

// The columns that a printable text takes on a terminal.
std::size_t columns(std::wstring_view text);

// The longest beginning of a printable text that takes at most `width` columns: its number of characters.
std::size_t fitting(std::wstring_view text, std::size_t width);

// One character a byte: how the library takes paths and what goes into the scanners' files.
std::wstring bytesAsWide(std::string_view bytes);

// Back from one character a byte.
std::string wideAsBytes(std::wstring_view wide);
