#include "scanners/zukhw/octal_escapes.h"

namespace {

constexpr std::size_t kEscapeLength = 4;

// "\ooo" at the head of the text, up to "\377".
bool startsWithEscape(std::string_view text) {
    const auto isOctal = [](char c) { return c >= '0' && c <= '7'; };
    return text.size() >= kEscapeLength && text[0] == '\\' && text[1] >= '0' && text[1] <= '3' &&
           isOctal(text[2]) && isOctal(text[3]);
}

}  // namespace

std::string decodeOctalEscapes(std::string_view text) {
    std::string decoded;
    while (!text.empty()) {
        if (!startsWithEscape(text)) {
            decoded += text.front();
            text.remove_prefix(1);
            continue;
        }
        decoded += static_cast<char>((text[1] - '0') * 64 + (text[2] - '0') * 8 + (text[3] - '0'));
        text.remove_prefix(kEscapeLength);
    }
    return decoded;
}
