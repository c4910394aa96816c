#pragma once

#include <cstddef>
#include <optional>

// How many bytes of a structure of this type and length are fields that the table's version knows. Some
// tables of an old version have longer structures, filled with their maker's own data or with nothing.
std::size_t smbiosKnownLength(unsigned type, std::size_t length, std::optional<unsigned> version);
