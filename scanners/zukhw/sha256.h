#pragma once

#include <string>
#include <string_view>

// The SHA-256 digest of `bytes` (FIPS 180-4) in 64 lower-case hex digits.
std::string sha256Hex(std::string_view bytes);
