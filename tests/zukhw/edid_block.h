#pragma once

#include <string>
#include <utility>
#include <vector>

// The base block of an EDID with these bytes at these offsets, and a checksum that is right.
inline std::string edidBlock(const std::vector<std::pair<std::size_t, std::string>>& parts) {
    std::string block(128, '\0');
    block.replace(1, 6, 6, '\xFF');
    for (const auto& [offset, bytes] : parts) block.replace(offset, bytes.size(), bytes);
    unsigned sum = 0;
    for (const char byte : block) sum += static_cast<unsigned char>(byte);
    block[127] = static_cast<char>((256 - sum % 256) % 256);
    return block;
}

// A text descriptor: 13 characters, ended by a line end when there is room.
inline std::string edidTextDescriptor(unsigned char tag, std::string text) {
    if (text.size() < 13) text += '\n';
    text.resize(13, ' ');
    return std::string(3, '\0') + static_cast<char>(tag) + '\0' + text;
}
