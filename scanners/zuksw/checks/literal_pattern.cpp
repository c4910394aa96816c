#include "scanners/zuksw/checks/literal_pattern.h"

#include <cstdint>

#include "scanners/zuksw/language/utf8.h"

namespace zuksw {
namespace {

constexpr char kDigits[] = "0123456789abcdef";

bool isLetter(unsigned byte) {
    return (byte | 0x20U) >= 'a' && (byte | 0x20U) <= 'z';
}

std::string hex(unsigned byte) {
    return std::string("\\x") + kDigits[byte >> 4U & 15U] + kDigits[byte & 15U];
}

std::string bytePattern(unsigned byte, bool ignoreCase) {
    if (!ignoreCase || !isLetter(byte)) return hex(byte);
    return "[" + hex(byte) + hex(byte ^ 0x20U) + "]";
}

void appendUnit(std::uint32_t unit, const LiteralForm& form, std::string* pattern) {
    const bool ignoreCase = form.ignoreCase && unit < 0x80;
    const std::string low = bytePattern(unit & 0xFFU, ignoreCase);
    const std::string high = hex(unit >> 8U);
    *pattern += form.encoding == LiteralForm::Encoding::kUtf16Le ? low + high : high + low;
}

}  // namespace

std::string literalPattern(std::string_view text, const LiteralForm& form) {
    std::string pattern;
    if (form.encoding == LiteralForm::Encoding::kBytes) {
        for (const char c : text) pattern += bytePattern(static_cast<unsigned char>(c), form.ignoreCase);
        return pattern;
    }
    while (!text.empty()) {
        const Utf8Character character = decodeUtf8(text);
        const bool valid = character.length != 0;
        const std::uint32_t code = valid ? character.codePoint : static_cast<unsigned char>(text[0]);
        text.remove_prefix(valid ? character.length : 1);
        if (code < 0x10000) {
            appendUnit(code, form, &pattern);
        } else {
            appendUnit(0xD800 + ((code - 0x10000) >> 10U), form, &pattern);
            appendUnit(0xDC00 + ((code - 0x10000) & 0x3FFU), form, &pattern);
        }
    }
    return pattern;
}

std::optional<std::string> hexPattern(std::string_view text) {
    std::string pattern;
    while (true) {
        text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
        if (text.empty()) break;
        const std::string_view pair = text.substr(0, 2);
        const bool any = pair == "??";
        if (!any && (pair.size() < 2 || pair.find_first_not_of("0123456789abcdefABCDEF") != pair.npos)) {
            return std::nullopt;
        }
        pattern += any ? "(?s:.)" : "\\x" + std::string(pair);
        text.remove_prefix(2);
    }
    if (pattern.empty()) return std::nullopt;
    return pattern;
}

}  // namespace zuksw
