#include "scanners/zukhw/base64.h"

#include <cstddef>
#include <cstdint>

std::string base64(std::string_view bytes) {
    static constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    while (!bytes.empty()) {
        const std::string_view three = bytes.substr(0, 3);
        std::uint32_t packed = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            packed = packed << 8 | (i < three.size() ? static_cast<unsigned char>(three[i]) : 0U);
        }
        for (std::size_t i = 0; i < 4; ++i) {
            text += i <= three.size() ? kDigits[packed >> (18 - 6 * i) & 0x3FU] : '=';
        }
        bytes.remove_prefix(three.size());
    }
    return text;
}
