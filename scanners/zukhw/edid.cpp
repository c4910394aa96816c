#include "scanners/zukhw/edid.h"

#include <numeric>

#include "scanners/zukhw/edid_descriptor.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr std::size_t kBlock = 128;
constexpr std::string_view kHeader("\x00\xFF\xFF\xFF\xFF\xFF\xFF\x00", 8);
constexpr std::size_t kDescriptors = 54;
constexpr std::size_t kDescriptorCount = 4;
constexpr unsigned kYearZero = 1990;

unsigned at(std::string_view bytes, std::size_t offset) {
    return static_cast<unsigned char>(bytes[offset]);
}

// Fifteen bits, five a letter, big-endian.
std::string makerLetters(std::string_view block) {
    const unsigned packed = at(block, 8) << 8 | at(block, 9);
    std::string letters;
    for (const unsigned shift : {10U, 5U, 0U}) {
        const unsigned letter = packed >> shift & 0x1FU;
        if (letter < 1 || letter > 26) return "";
        letters += static_cast<char>('A' + letter - 1);
    }
    return letters;
}

std::optional<std::uint32_t> serialCode(std::string_view block) {
    const std::uint32_t code = at(block, 12) | at(block, 13) << 8 | at(block, 14) << 16 | at(block, 15) << 24;
    const bool isFilled = code != 0 && code != 0x01010101 && code != UINT32_MAX;
    return isFilled ? std::optional(code) : std::nullopt;
}

void readDate(std::string_view block, Edid* edid) {
    constexpr unsigned kIsModelYear = 0xFF;
    constexpr unsigned kLastWeek = 54;
    const unsigned week = at(block, 16);
    const unsigned year = kYearZero + at(block, 17);
    if (week == kIsModelYear) {
        edid->modelYear = year;
        return;
    }
    edid->manufactureYear = year;
    if (week >= 1 && week <= kLastWeek) edid->manufactureWeek = week;
}

// Version 1.4 gave a meaning to bits that were zero, or something else, before.
void readInput(std::string_view block, Edid* edid) {
    static constexpr const char* kInterfaces[] = {"", "DVI", "HDMI-a", "HDMI-b", "MDDI", "DisplayPort"};
    static constexpr unsigned kBits[] = {0, 6, 8, 10, 12, 14, 16, 0};
    const unsigned input = at(block, 20);
    edid->digital = (input & 0x80U) != 0;
    if (!edid->digital || edid->version != 1 || edid->revision < 4) return;
    const unsigned interface = input & 0x0FU;
    if (interface < std::size(kInterfaces)) edid->digitalInterface = kInterfaces[interface];
    const unsigned bits = kBits[input >> 4 & 7U];
    if (bits != 0) edid->bitsPerColor = bits;
}

std::string_view descriptor(std::string_view block, std::size_t index) {
    return block.substr(kDescriptors + index * kEdidDescriptor, kEdidDescriptor);
}

// Longer texts than a descriptor has room for go on in a second one.
std::string textOf(std::string_view block, EdidText kind) {
    std::string text;
    for (std::size_t i = 0; i < kDescriptorCount; ++i) {
        const std::string part = edidText(descriptor(block, i), kind);
        if (!part.empty() && !text.empty()) text += ' ';
        text += part;
    }
    return text;
}

void readDescriptors(std::string_view block, Edid* edid) {
    edid->model = textOf(block, EdidText::ProductName);
    if (edid->model.empty()) edid->model = textOf(block, EdidText::Other);
    edid->serialNumber = textOf(block, EdidText::SerialNumber);
    edid->preferred = edidTiming(descriptor(block, 0));
    const bool hasRateOffsets = edid->version == 1 && edid->revision >= 4;
    for (std::size_t i = 0; i < kDescriptorCount && !edid->range; ++i) {
        edid->range = edidRange(descriptor(block, i), hasRateOffsets);
    }
}

// The exact size stands with the first timing; the block's own one is in centimetres, and an aspect ratio
// when one of its numbers is zero.
void readSize(std::string_view block, Edid* edid) {
    const unsigned width = at(block, 21) * 10;
    const unsigned height = at(block, 22) * 10;
    if (edid->preferred && edid->preferred->widthMillimetres > 0 && edid->preferred->heightMillimetres > 0) {
        edid->widthMillimetres = edid->preferred->widthMillimetres;
        edid->heightMillimetres = edid->preferred->heightMillimetres;
    } else if (width > 0 && height > 0) {
        edid->widthMillimetres = width;
        edid->heightMillimetres = height;
    }
}

// The first timing of the CTA-861 extensions, for displays whose first block has none.
std::optional<Edid::Timing> extensionTiming(std::string_view bytes) {
    constexpr unsigned kCta861 = 0x02;
    const std::size_t told = at(bytes, 126);
    for (std::size_t i = 1; i <= told && (i + 1) * kBlock <= bytes.size(); ++i) {
        const std::string_view block = bytes.substr(i * kBlock, kBlock);
        const std::size_t start = at(block, 2);  // below 4: the block has no timings
        if (at(block, 0) != kCta861 || start < 4 || start + kEdidDescriptor > kBlock - 1) continue;
        if (const auto timing = edidTiming(block.substr(start, kEdidDescriptor))) return timing;
    }
    return std::nullopt;
}

bool sumsToZero(std::string_view block) {
    const auto add = [](unsigned sum, char byte) { return sum + static_cast<unsigned char>(byte); };
    return std::accumulate(block.begin(), block.end(), 0U, add) % 256 == 0;
}

}  // namespace

std::optional<Edid> parseEdid(std::string_view bytes) {
    if (bytes.size() < kBlock || !startsWith(bytes, kHeader)) return std::nullopt;
    const std::string_view block = bytes.substr(0, kBlock);
    Edid edid;
    edid.makerLetters = makerLetters(block);
    edid.productCode = at(block, 10) | at(block, 11) << 8;
    edid.serialCode = serialCode(block);
    edid.version = at(block, 18);
    edid.revision = at(block, 19);
    readDate(block, &edid);
    readInput(block, &edid);
    readDescriptors(block, &edid);
    readSize(block, &edid);
    if (!edid.preferred) edid.preferred = extensionTiming(bytes);
    edid.checksumValid = sumsToZero(block);
    return edid;
}
