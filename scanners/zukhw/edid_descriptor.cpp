#include "scanners/zukhw/edid_descriptor.h"

#include <cstdint>

#include "scanners/zukhw/text.h"

namespace {

constexpr unsigned kRangeLimits = 0xFD;

unsigned at(std::string_view bytes, std::size_t offset) {
    return static_cast<unsigned char>(bytes[offset]);
}

// Three zero bytes, where a timing has its pixel clock, and what it is about.
bool isAbout(std::string_view descriptor, unsigned tag) {
    return at(descriptor, 0) == 0 && at(descriptor, 1) == 0 && at(descriptor, 2) == 0 &&
           at(descriptor, 3) == tag;
}

// Twelve bits: the low eight in a byte of their own, the high four in half of one that they share.
unsigned twelveBits(std::string_view descriptor, std::size_t low, std::size_t high, unsigned shift) {
    return at(descriptor, low) | (at(descriptor, high) >> shift & 0x0FU) << 8;
}

}  // namespace

std::string edidText(std::string_view descriptor, EdidText kind) {
    constexpr std::size_t kText = 5;
    if (!isAbout(descriptor, static_cast<unsigned>(kind))) return "";
    std::string text;
    for (const char c : descriptor.substr(kText)) {
        if (c == '\n') break;
        if (static_cast<unsigned char>(c) >= ' ') text += c;
    }
    return std::string(trim(text));
}

std::optional<Edid::Timing> edidTiming(std::string_view descriptor) {
    constexpr char kFiller = 1;  // of descriptors that old displays leave unused
    if (descriptor.find_first_not_of(kFiller) == std::string_view::npos) return std::nullopt;
    constexpr std::uint64_t kClockUnitMilliHertz = 10'000'000;  // 10 kHz
    constexpr std::uint64_t kHighestMilliHertz = 10'000'000;
    const unsigned clock = at(descriptor, 0) | at(descriptor, 1) << 8;
    Edid::Timing timing;
    timing.width = twelveBits(descriptor, 2, 4, 4);
    timing.height = twelveBits(descriptor, 5, 7, 4);
    if (clock == 0 || timing.width == 0 || timing.height == 0) return std::nullopt;
    const std::uint64_t line = timing.width + twelveBits(descriptor, 3, 4, 0);
    const std::uint64_t lines = timing.height + twelveBits(descriptor, 6, 7, 0);
    const bool interlaced = (at(descriptor, 17) & 0x80U) != 0;
    const std::uint64_t cycle = line * lines + (interlaced ? line / 2 : 0);  // a field ends with half a line
    const std::uint64_t refresh = (clock * kClockUnitMilliHertz + cycle / 2) / cycle;
    if (refresh <= kHighestMilliHertz) timing.refreshMilliHertz = static_cast<unsigned>(refresh);
    if (interlaced) timing.height *= 2;
    timing.widthMillimetres = twelveBits(descriptor, 12, 14, 4);
    timing.heightMillimetres = twelveBits(descriptor, 13, 14, 0);
    return timing;
}

std::optional<Edid::Range> edidRange(std::string_view descriptor, bool hasRateOffsets) {
    constexpr unsigned kOffset = 255;
    constexpr unsigned kCvtSupport = 0x04;
    if (!isAbout(descriptor, kRangeLimits)) return std::nullopt;
    const unsigned flags = hasRateOffsets ? at(descriptor, 4) : 0;
    // Two bits for each direction: the upper one raises the maximum, both together also the minimum.
    const auto minimum = [&](unsigned shift) { return (flags >> shift & 3U) == 3U ? kOffset : 0U; };
    const auto maximum = [&](unsigned shift) { return (flags >> shift & 2U) == 2U ? kOffset : 0U; };
    Edid::Range range;
    range.minVerticalHz = at(descriptor, 5) + minimum(0);
    range.maxVerticalHz = at(descriptor, 6) + maximum(0);
    range.minHorizontalKHz = at(descriptor, 7) + minimum(2);
    range.maxHorizontalKHz = at(descriptor, 8) + maximum(2);
    range.maxPixelClockKHz = at(descriptor, 9) * 10'000;
    const unsigned lessThanTold = (at(descriptor, 12) >> 2) * 250;
    const bool refined = hasRateOffsets && at(descriptor, 10) == kCvtSupport;
    if (refined && lessThanTold < range.maxPixelClockKHz) range.maxPixelClockKHz -= lessThanTold;
    return range;
}
