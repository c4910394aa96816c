#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

// All of these take the whole text, blanks at its ends aside: trailing rubbish, a sign or an overflow give no
// value rather than a clipped one.
std::optional<std::uint64_t> parseDecimal(std::string_view text);
std::optional<std::uint64_t> parseHex(std::string_view text);  // with or without 0x
std::optional<std::int64_t> parseSigned(std::string_view text);

// "123 kB", as in /proc/meminfo, in bytes.
std::optional<std::uint64_t> parseKibibytes(std::string_view text);

// "32K", "8M", "1G" or a plain number, as the kernel writes cache sizes, in bytes.
std::optional<std::uint64_t> parseSize(std::string_view text);

// A kernel list of numbers, "0-3,8,10-11", in ascending order without repeats. Numbers above kMaxListed and
// anything malformed give no value.
constexpr std::uint64_t kMaxListed = 65535;
std::optional<std::vector<unsigned>> parseCpuList(std::string_view text);
// A kernel bit mask, "00000000,0000000f", as the same list.
std::optional<std::vector<unsigned>> parseCpuMask(std::string_view text);

// "2026-05-20T10:11:12.123Z", with an offset instead of the Z or without either, in seconds since 1970.
std::optional<std::int64_t> parseIsoTime(std::string_view text);

// The value of the line "KEY=value" (separator '=') or "Key  : value" (':'), blanks at its ends removed; no
// value when no line has that key.
std::optional<std::string_view> findValue(std::string_view text, std::string_view key, char separator);
