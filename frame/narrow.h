#pragma once

#include <string>
#include <string_view>

// The library's text is wide; the operating system's is 8-bit. Between them no encoding is involved:
// narrowing keeps the low byte of each character, widening sign-extends each byte.
std::string narrow(std::wstring_view text);
std::wstring widen(std::string_view text);
void appendWidened(std::wstring& wide, std::string_view text);
