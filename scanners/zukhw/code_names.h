#pragma once

#include <cstddef>
#include <string_view>

// The name at place `code` of a table of names; empty past its end.
template <std::size_t Size>
std::string_view nameOfCode(const std::string_view (&names)[Size], unsigned code) {
    return code < Size ? names[code] : std::string_view();
}
