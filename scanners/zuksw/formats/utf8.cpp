#include "scanners/zuksw/formats/utf8.h"

namespace zuksw {

void appendUtf8(std::string& text, std::uint32_t codePoint) {
    const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (surrogate || codePoint > 0x10FFFF) codePoint = 0xFFFD;
    const auto trail = [&](int shift) { return static_cast<char>(0x80 | ((codePoint >> shift) & 0x3F)); };
    if (codePoint < 0x80) {
        text += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        text += {static_cast<char>(0xC0 | (codePoint >> 6)), trail(0)};
    } else if (codePoint < 0x10000) {
        text += {static_cast<char>(0xE0 | (codePoint >> 12)), trail(6), trail(0)};
    } else {
        text += {static_cast<char>(0xF0 | (codePoint >> 18)), trail(12), trail(6), trail(0)};
    }
}

}  // namespace zuksw
