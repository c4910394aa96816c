#include "scanners/zukhw/hex.h"

std::string hex(std::optional<std::uint64_t> value, unsigned digits) {
    if (!value || (digits < 16 && *value >> (4 * digits) != 0)) return "";
    std::string text(digits, '0');
    for (std::uint64_t rest = *value; rest != 0; rest >>= 4) text[--digits] = "0123456789abcdef"[rest & 0xFU];
    return text;
}
