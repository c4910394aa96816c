#include "scanners/zuksw/language/utf8.h"

#include <cstring>

namespace zuksw {
namespace {

// The bounds of the second byte keep out overlong forms, surrogates and what lies above U+10FFFF.
struct LeadByte {
    unsigned char first, last;
    std::size_t length;
    unsigned char secondMin, secondMax;
};
constexpr LeadByte kLeadBytes[] = {
    {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF}, {0xE1, 0xEC, 3, 0x80, 0xBF},
    {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF}, {0xF0, 0xF0, 4, 0x90, 0xBF},
    {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

const LeadByte* findLead(unsigned char byte) {
    for (const LeadByte& lead : kLeadBytes) {
        if (byte >= lead.first && byte <= lead.last) return &lead;
    }
    return nullptr;
}

std::size_t asciiPrefix(std::string_view bytes) {
    std::size_t i = 0;
    for (; i + 8 <= bytes.size(); i += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data() + i, 8);
        if ((word & 0x8080808080808080U) != 0) break;
    }
    while (i < bytes.size() && static_cast<unsigned char>(bytes[i]) < 0x80) ++i;
    return i;
}

}  // namespace

Utf8Character decodeUtf8(std::string_view bytes) {
    if (bytes.empty()) return {};
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    if (at(0) < 0x80) return {at(0), 1};
    const LeadByte* lead = findLead(at(0));
    if (lead == nullptr || bytes.size() < lead->length) return {};
    if (at(1) < lead->secondMin || at(1) > lead->secondMax) return {};
    std::uint32_t code = at(0) & (0xFFU >> (lead->length + 1));
    for (std::size_t i = 1; i < lead->length; ++i) {
        if ((at(i) & 0xC0U) != 0x80U) return {};
        code = code << 6U | (at(i) & 0x3FU);
    }
    return {code, lead->length};
}

bool isUtf8(std::string_view bytes) {
    while (true) {
        bytes.remove_prefix(asciiPrefix(bytes));
        if (bytes.empty()) return true;
        const Utf8Character character = decodeUtf8(bytes);
        if (character.length == 0) return false;
        bytes.remove_prefix(character.length);
    }
}

}  // namespace zuksw
