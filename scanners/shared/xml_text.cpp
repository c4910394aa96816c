#include "scanners/shared/xml_text.h"

#include <cstdint>

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

bool isXmlControl(unsigned char byte) {
    return byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
}

bool isContinuation(unsigned char byte) {
    return (byte & 0xC0U) == 0x80U;
}

// The bounds of the second byte keep out overlong forms, surrogates and what lies above U+10FFFF.
struct LeadByte {
    unsigned char first, last, length, secondMin, secondMax;
};
constexpr LeadByte kLeadBytes[] = {
    {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF}, {0xE1, 0xEC, 3, 0x80, 0xBF},
    {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF}, {0xF0, 0xF0, 4, 0x90, 0xBF},
    {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

struct Sequence {
    std::size_t length;  // bytes to step over
    bool valid;
};

// What stands at the head of `bytes`, whose first byte is not ASCII.
Sequence takeSequence(std::string_view bytes) {
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    for (const LeadByte& lead : kLeadBytes) {
        if (at(0) < lead.first || at(0) > lead.last) continue;
        if (bytes.size() < 2 || at(1) < lead.secondMin || at(1) > lead.secondMax) return {1, false};
        std::size_t length = 2;
        while (length < lead.length && length < bytes.size() && isContinuation(at(length))) ++length;
        return {length, length == lead.length};
    }
    return {1, false};
}

bool isNonCharacter(std::string_view sequence) {  // U+FFFE and U+FFFF are no XML characters
    return sequence == "\xEF\xBF\xBE" || sequence == "\xEF\xBF\xBF";
}

std::string_view escapeFor(char c) {
    switch (c) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        default:
            return {};
    }
}

bool isPlain(unsigned char byte, bool escape) {
    if (byte >= 0x80 || isXmlControl(byte)) return false;
    return !escape || escapeFor(static_cast<char>(byte)).empty();
}

// isPlain for every byte: text is read byte by byte, and most of it goes through unchanged.
class PlainBytes {
  public:
    explicit PlainBytes(bool escape) {
        for (unsigned byte = 0; byte < 256; ++byte)
            plain_[byte] = isPlain(static_cast<unsigned char>(byte), escape);
    }
    std::size_t runAt(std::string_view bytes) const {
        std::size_t length = 0;
        while (length < bytes.size() && plain_[static_cast<unsigned char>(bytes[length])]) ++length;
        return length;
    }

  private:
    bool plain_[256];
};

void append(std::string* out, std::string_view bytes, bool escape) {
    static const PlainBytes kPlain[] = {PlainBytes(false), PlainBytes(true)};
    while (!bytes.empty()) {
        const std::size_t plain = kPlain[escape ? 1 : 0].runAt(bytes);
        out->append(bytes.substr(0, plain));
        bytes.remove_prefix(plain);
        if (bytes.empty()) return;
        if (static_cast<unsigned char>(bytes.front()) < 0x80) {
            out->append(escape ? escapeFor(bytes.front()) : std::string_view());
            bytes.remove_prefix(1);
            continue;
        }
        const Sequence sequence = takeSequence(bytes);
        const std::string_view text = bytes.substr(0, sequence.length);
        if (!sequence.valid) out->append(kReplacement);
        if (sequence.valid && !isNonCharacter(text)) out->append(text);
        bytes.remove_prefix(sequence.length);
    }
}

}  // namespace

void appendXmlText(std::string* out, std::string_view bytes) {
    append(out, bytes, true);
}

std::string toXmlCharacters(std::string_view bytes) {
    std::string out;
    append(&out, bytes, false);
    return out;
}
