#include "platform/utf8.h"

#include <gtest/gtest.h>

#include <string>

namespace {
std::wstring decoded(std::string_view bytes) {
    std::wstring out(bytes.size(), L'?');
    out.resize(static_cast<std::size_t>(decodeUtf8(bytes, out.data()) - out.data()));
    return out;
}

std::string encoded(wchar_t character) {
    char out[4];
    return {out, encodeUtf8(character, out)};
}

struct DecodeCase {
    std::string_view bytes;
    std::wstring_view characters;
};

const DecodeCase kDecodeCases[] = {
    {"", L""},
    {"plain", L"plain"},
    {"more than one stride of plain text", L"more than one stride of plain text"},
    {"\xC3\xA9", L"\u00E9"},
    {"1234567\xC3\xA9tail", L"1234567\u00E9tail"},  // the character crosses a stride
    {"\xE2\x82\xAC", L"\u20AC"},
    {"\xF0\x9F\x98\x80", L"\U0001F600"},
    {"\xF4\x8F\xBF\xBF", L"\U0010FFFF"},
    {"\x80x", L"\uFFFDx"},  // a continuation byte alone
    {"\xC3", L"\uFFFD"},    // cut off
    {"\xE2\x82", L"\uFFFD\uFFFD"},
    {"\xC3x", L"\uFFFDx"},
    {"\xC0\x80", L"\uFFFD\uFFFD"},  // longer than needed
    {"\xE0\x80\x80", L"\uFFFD\uFFFD\uFFFD"},
    {"\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},            // a surrogate
    {"\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"},  // past the last character
    {"\xFF", L"\uFFFD"},
};

TEST(Utf8, Decodes) {
    for (const DecodeCase& c : kDecodeCases) EXPECT_EQ(c.characters, decoded(c.bytes)) << c.bytes;
}

struct EncodeCase {
    wchar_t character;
    std::string_view bytes;
};

const EncodeCase kEncodeCases[] = {
    {L'a', "a"},
    {0x7F, "\x7F"},
    {0x80, "\xC2\x80"},
    {0x7FF, "\xDF\xBF"},
    {0x800, "\xE0\xA0\x80"},
    {0xFFFF, "\xEF\xBF\xBF"},
    {0x10000, "\xF0\x90\x80\x80"},
    {0x10FFFF, "\xF4\x8F\xBF\xBF"},
    {0xD800, "\xEF\xBF\xBD"},
    {0xDFFF, "\xEF\xBF\xBD"},
    {0x110000, "\xEF\xBF\xBD"},
    {-1, "\xEF\xBF\xBD"},
};

TEST(Utf8, Encodes) {
    for (const EncodeCase& c : kEncodeCases) EXPECT_EQ(c.bytes, encoded(c.character)) << c.character;
}
}  // namespace
