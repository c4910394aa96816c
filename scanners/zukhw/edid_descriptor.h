#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "scanners/zukhw/edid.h"

// The parts of an EDID that hold either a timing or something about the display, 18 bytes each. All of these
// take exactly one descriptor.
constexpr std::size_t kEdidDescriptor = 18;

enum class EdidText : unsigned char { ProductName = 0xFC, Other = 0xFE, SerialNumber = 0xFF };

// The text that the descriptor holds; empty when it holds something else.
std::string edidText(std::string_view descriptor, EdidText kind);

// No value when it holds no timing.
std::optional<Edid::Timing> edidTiming(std::string_view descriptor);

// The rates that the display can follow. hasRateOffsets: from version 1.4 on rates above 255 can be told.
std::optional<Edid::Range> edidRange(std::string_view descriptor, bool hasRateOffsets);
