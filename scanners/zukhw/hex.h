#pragma once

#include <cstdint>
#include <optional>
#include <string>

// An identifier as it is reported: lower-case hex digits, zeros in front up to `digits`; empty when unknown
// or too large for them.
std::string hex(std::optional<std::uint64_t> value, unsigned digits);
