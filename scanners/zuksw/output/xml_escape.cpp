#include "scanners/zuksw/output/xml_escape.h"

#include <cstdint>

#include "scanners/zuksw/language/utf8.h"

namespace zuksw {
namespace {

void appendHex(std::string_view bytes, std::string* out) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        *out += "\\x";
        *out += kDigits[byte >> 4U];
        *out += kDigits[byte & 15U];
    }
}

void appendReference(std::uint32_t code, std::string* out) {
    *out += "&#" + std::to_string(code) + ';';
}

bool isXmlCharacter(std::uint32_t code) {
    return code == '\t' || code == '\n' || code == '\r' || (code >= 0x20 && code != 0xFFFE && code != 0xFFFF);
}

// One ASCII character that XML allows.
void appendAscii(char c, bool attribute, std::string* out) {
    switch (c) {
        case '&':
            *out += "&amp;";
            return;
        case '<':
            *out += "&lt;";
            return;
        case '>':
            *out += "&gt;";
            return;
        case '"':
            *out += "&quot;";
            return;
        case '\r':
            return appendReference('\r', out);
        case '\t':
        case '\n':
            if (attribute) return appendReference(static_cast<std::uint32_t>(c), out);
            break;
        default:
            break;
    }
    *out += c;
}

void append(std::string_view bytes, bool attribute, std::string* out) {
    while (!bytes.empty()) {
        const Utf8Character character = decodeUtf8(bytes);
        const std::size_t length = character.length == 0 ? 1 : character.length;
        if (character.length == 0 || !isXmlCharacter(character.codePoint)) {
            appendHex(bytes.substr(0, length), out);
        } else if (character.codePoint > 0x7E) {
            appendReference(character.codePoint, out);
        } else if (bytes.substr(0, 2) == "\\x") {
            appendHex("\\", out);
        } else {
            appendAscii(bytes.front(), attribute, out);
        }
        bytes.remove_prefix(length);
    }
}

}  // namespace

void appendXmlText(std::string_view bytes, std::string* out) {
    append(bytes, false, out);
}
void appendXmlAttribute(std::string_view bytes, std::string* out) {
    append(bytes, true, out);
}

void appendAttribute(std::string_view name, std::string_view value, std::string* out) {
    *out += ' ';
    *out += name;
    *out += "=\"";
    appendXmlAttribute(value, out);
    *out += '"';
}

}  // namespace zuksw
