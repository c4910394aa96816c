#pragma once

#include <cstdint>
#include <string>

namespace zuksw {

/** Appends `codePoint` to `text` in UTF-8; a surrogate or a number above U+10FFFF becomes U+FFFD. */
void appendUtf8(std::string& text, std::uint32_t codePoint);

}  // namespace zuksw
