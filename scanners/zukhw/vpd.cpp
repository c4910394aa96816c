#include "scanners/zukhw/vpd.h"

#include <array>
#include <cstdio>

namespace {

constexpr std::size_t kHeader = 4;

unsigned byteAt(std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]);
}

unsigned bigEndianWord(std::string_view bytes, std::size_t at) {
    return byteAt(bytes, at) << 8 | byteAt(bytes, at + 1);
}

// The page without its header, as long as it says and as there are bytes; empty for another page.
std::string_view pageBody(std::string_view page, unsigned number) {
    if (page.size() < kHeader || byteAt(page, 1) != number) return {};
    return page.substr(kHeader, bigEndianWord(page, 2));
}

std::string toHex(std::string_view bytes) {
    std::string hex;
    for (const char byte : bytes) {
        std::array<char, 3> digits{};
        std::snprintf(digits.data(), digits.size(), "%02x", static_cast<unsigned char>(byte));
        hex += digits.data();
    }
    return hex;
}

struct Designator {
    unsigned type;
    bool ofUnit;  // and not of a port or a target
    std::string_view bytes;
};

// Takes the first designator off the list; no value at its end or where it is cut.
std::optional<Designator> takeDesignator(std::string_view* list) {
    if (list->size() < kHeader || list->size() - kHeader < byteAt(*list, 3)) return std::nullopt;
    const std::size_t length = byteAt(*list, 3);
    const Designator designator{byteAt(*list, 1) & 0x0FU, (byteAt(*list, 1) & 0x30U) == 0,
                                list->substr(kHeader, length)};
    list->remove_prefix(kHeader + length);
    return designator;
}

// ATA texts stand in little-endian words: two characters swapped each.
std::string ataText(std::string_view identify, std::size_t firstWord, std::size_t words) {
    std::string text;
    for (std::size_t word = firstWord; word < firstWord + words; ++word) {
        text += identify[word * 2 + 1];
        text += identify[word * 2];
    }
    return text;
}

std::uint16_t ataWord(std::string_view identify, std::size_t word) {
    return static_cast<std::uint16_t>(byteAt(identify, word * 2) | byteAt(identify, word * 2 + 1) << 8);
}

}  // namespace

std::string_view vpdSerial(std::string_view page) {
    return pageBody(page, 0x80);
}

std::string vpdName(std::string_view page) {
    constexpr unsigned kEui64 = 2;
    constexpr unsigned kNaa = 3;
    std::string eui;
    std::string_view list = pageBody(page, 0x83);
    while (const auto designator = takeDesignator(&list)) {
        if (!designator->ofUnit || designator->bytes.empty()) continue;
        if (designator->type == kNaa) return "naa." + toHex(designator->bytes);
        if (designator->type == kEui64 && eui.empty()) eui = "eui." + toHex(designator->bytes);
    }
    return eui;
}

std::optional<AtaIdentity> vpdAtaIdentity(std::string_view page) {
    constexpr std::size_t kIdentify = 60;
    constexpr std::size_t kIdentifyBytes = 512;
    constexpr std::uint16_t kNotReported = 0xFFFF;
    if (page.size() < kIdentify + kIdentifyBytes || byteAt(page, 1) != 0x89) return std::nullopt;
    const std::string_view identify = page.substr(kIdentify, kIdentifyBytes);
    AtaIdentity identity;
    identity.serial = ataText(identify, 10, 10);
    identity.revision = ataText(identify, 23, 4);
    identity.rotation = ataWord(identify, 217);
    const std::uint16_t speeds = ataWord(identify, 76);
    identity.serialAta = speeds != 0 && speeds != kNotReported;
    return identity;
}

std::uint16_t vpdRotation(std::string_view page) {
    const std::string_view body = pageBody(page, 0xB1);
    return body.size() < 2 ? std::uint16_t{0} : static_cast<std::uint16_t>(bigEndianWord(body, 0));
}

std::optional<unsigned> rotationRpm(std::uint16_t code) {
    constexpr unsigned kSlowest = 0x0401;
    constexpr unsigned kFastest = 0xFFFE;
    if (code < kSlowest || code > kFastest) return std::nullopt;
    return code;
}
