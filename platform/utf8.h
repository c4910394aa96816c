#pragma once

#include <cstddef>
#include <string_view>

constexpr char32_t kReplacementCharacter = 0xFFFD;

// Decodes UTF-8 to `out`, which has room for as many characters as there are bytes, and returns the end of
// what it wrote. Anything that is not UTF-8 becomes U+FFFD.
wchar_t* decodeUtf8(std::string_view bytes, wchar_t* out);

// Encodes one character to `out`, which has room for four bytes, and returns the end of what it wrote.
// What is no character of Unicode (surrogates included) becomes U+FFFD.
char* encodeUtf8(wchar_t character, char* out);
