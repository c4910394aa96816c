#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// What a display tells of itself in its EDID (VESA E-EDID 1.0 to 1.4). Texts are raw and empty, numbers
// absent, when the display does not tell.
struct Edid {
    struct Timing {
        unsigned width = 0, height = 0;  // pixels; of both fields when interlaced
        unsigned refreshMilliHertz = 0;  // fields a second when interlaced; 0 when it makes no sense
        unsigned widthMillimetres = 0, heightMillimetres = 0;
    };
    struct Range {
        unsigned minVerticalHz = 0, maxVerticalHz = 0;
        unsigned minHorizontalKHz = 0, maxHorizontalKHz = 0;
        unsigned maxPixelClockKHz = 0;  // 0: not told
    };

    std::string makerLetters;  // three of them
    unsigned productCode = 0;
    std::string model;
    std::string serialNumber;
    std::optional<std::uint32_t> serialCode;
    unsigned version = 0, revision = 0;
    std::optional<unsigned> manufactureYear, manufactureWeek, modelYear;
    bool digital = false;
    const char* digitalInterface = "";
    std::optional<unsigned> bitsPerColor;
    std::optional<unsigned> widthMillimetres, heightMillimetres;  // both or none
    std::optional<Timing> preferred;
    std::optional<Range> range;
    bool checksumValid = false;  // of the first block
};

// Reads the first block, and of the extensions that are there the timings of CTA-861 ones. No value when the
// bytes are too few or do not begin as an EDID does.
std::optional<Edid> parseEdid(std::string_view bytes);
