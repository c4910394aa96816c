#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zuksw {

/** What stands at the head of some bytes. */
struct Utf8Character {
    std::uint32_t codePoint = 0;
    std::size_t length = 0;  // 0: the first byte begins no well-formed character
};

/** Decodes the first character; overlong forms, surrogates and values above U+10FFFF are not well-formed. */
Utf8Character decodeUtf8(std::string_view bytes);

/** Whether the bytes are well-formed UTF-8. */
bool isUtf8(std::string_view bytes);

}  // namespace zuksw
