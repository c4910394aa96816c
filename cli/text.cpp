#include "cli/text.h"

#include <algorithm>
#include <cwchar>

namespace {

constexpr wchar_t kReplacement = L'\uFFFD';

bool isCharacter(wchar_t character) {
    const std::wint_t code = std::char_traits<wchar_t>::to_int_type(character);
    return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

bool within(wchar_t character, wchar_t first, wchar_t last) {
    return first <= character && character <= last;
}

std::size_t columnsOf(wchar_t character) {
    const int width = wcwidth(character);
    return width < 0 ? 1 : static_cast<std::size_t>(width);
}

void appendUtf8(unsigned code, std::string& out) {
    const auto tail = [&](unsigned shift) { out += static_cast<char>(0x80 | ((code >> shift) & 0x3F)); };
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        tail(0);
    } else if (code < 0x10000) {
        out += static_cast<char>(0xE0 | (code >> 12));
        tail(6);
        tail(0);
    } else {
        out += static_cast<char>(0xF0 | (code >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

}  // namespace

bool isUnsafe(wchar_t character) {
    return within(character, 0, 0x1F) || within(character, 0x7F, 0x9F) || within(character, 0x200E, 0x200F) ||
           within(character, 0x2028, 0x202E) || within(character, 0x2066, 0x2069);
}

std::wstring printable(std::wstring_view text) {
    std::wstring safe(text);
    std::replace_if(
        safe.begin(), safe.end(), [](wchar_t c) { return isUnsafe(c) || !isCharacter(c); }, kReplacement);
    return safe;
}

std::string toUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t character : text) {
        appendUtf8(static_cast<unsigned>(isCharacter(character) ? character : kReplacement), bytes);
    }
    return bytes;
}

std::wstring fromLocale(const char* text) {
    std::wstring wide;
    std::mbstate_t state{};
    for (std::size_t left = std::char_traits<char>::length(text); left > 0;) {
        wchar_t character = kReplacement;
        std::size_t used = std::mbrtowc(&character, text, left, &state);
        if (used > left) {  // not valid, or cut off
            state = {};
            character = kReplacement;
            used = 1;
        }
        wide += character;
        text += used;
        left -= used;
    }
    return wide;
}

std::size_t columns(std::wstring_view text) {
    std::size_t sum = 0;
    for (const wchar_t character : text) sum += columnsOf(character);
    return sum;
}

std::size_t fitting(std::wstring_view text, std::size_t width) {
    std::size_t used = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        used += columnsOf(text[i]);
        if (used > width) return i;
    }
    return text.size();
}

std::wstring bytesAsWide(std::string_view bytes) {
    std::wstring wide;
    wide.reserve(bytes.size());
    for (const char byte : bytes) wide.push_back(static_cast<unsigned char>(byte));
    return wide;
}

std::string wideAsBytes(std::wstring_view wide) {
    std::string bytes;
    bytes.reserve(wide.size());
    for (const wchar_t character : wide) bytes.push_back(static_cast<char>(character));
    return bytes;
}
