#include "scanners/zukhw/parse.h"

#include <algorithm>
#include <charconv>
#include <ctime>
#include <string>

#include "scanners/zukhw/calendar.h"
#include "scanners/zukhw/text.h"

namespace {

template <typename Number>
std::optional<Number> parseWhole(std::string_view text, int base) {
    Number value = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value, base);
    if (error != std::errc() || rest != end) return std::nullopt;
    return value;
}

std::optional<std::uint64_t> scaled(std::optional<std::uint64_t> value, std::uint64_t unit) {
    if (!value || *value > UINT64_MAX / unit) return std::nullopt;
    return *value * unit;
}

void sortUnique(std::vector<unsigned>* numbers) {
    std::sort(numbers->begin(), numbers->end());
    numbers->erase(std::unique(numbers->begin(), numbers->end()), numbers->end());
}

}  // namespace

std::optional<std::uint64_t> parseDecimal(std::string_view text) {
    return parseWhole<std::uint64_t>(trim(text), 10);
}

std::optional<std::uint64_t> parseHex(std::string_view text) {
    text = trim(text);
    if (startsWith(text, "0x") || startsWith(text, "0X")) text.remove_prefix(2);
    return parseWhole<std::uint64_t>(text, 16);
}

std::optional<std::int64_t> parseSigned(std::string_view text) {
    return parseWhole<std::int64_t>(trim(text), 10);
}

std::optional<std::uint64_t> parseKibibytes(std::string_view text) {
    text = trim(text);
    if (!endsWith(text, " kB")) return std::nullopt;
    text.remove_suffix(3);
    return scaled(parseDecimal(text), 1024);
}

std::optional<std::uint64_t> parseSize(std::string_view text) {
    text = trim(text);
    std::uint64_t unit = 1;
    if (endsWith(text, "K")) unit = 1024;
    if (endsWith(text, "M")) unit = 1024 * 1024;
    if (endsWith(text, "G")) unit = 1024 * 1024 * 1024;
    if (unit != 1) text.remove_suffix(1);
    return scaled(parseDecimal(text), unit);
}

std::optional<std::vector<unsigned>> parseCpuList(std::string_view text) {
    std::vector<unsigned> numbers;
    text = trim(text);
    if (text.empty()) return numbers;
    for (const std::string_view part : split(text, ',')) {
        const std::size_t dash = part.find('-');
        const auto first = parseDecimal(part.substr(0, dash));
        const auto last = dash == std::string_view::npos ? first : parseDecimal(part.substr(dash + 1));
        if (!first || !last || *first > *last || *last > kMaxListed) return std::nullopt;
        if (numbers.size() > kMaxListed) return std::nullopt;  // the same range over and over
        for (std::uint64_t n = *first; n <= *last; ++n) numbers.push_back(static_cast<unsigned>(n));
    }
    sortUnique(&numbers);
    return numbers;
}

std::optional<std::vector<unsigned>> parseCpuMask(std::string_view text) {
    std::vector<unsigned> numbers;
    const std::vector<std::string_view> groups = split(trim(text), ',');
    if (groups.size() > kMaxListed / 32) return std::nullopt;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const auto bits = parseHex(groups[groups.size() - 1 - i]);  // the last one has the lowest numbers
        if (!bits || *bits > UINT32_MAX) return std::nullopt;
        for (unsigned bit = 0; bit < 32; ++bit) {
            if ((*bits >> bit & 1U) != 0) numbers.push_back(static_cast<unsigned>(i) * 32 + bit);
        }
    }
    return numbers;
}

std::optional<std::int64_t> parseIsoTime(std::string_view text) {
    const std::string copy(trim(text));
    std::tm parts{};
    const char* rest = ::strptime(copy.c_str(), "%Y-%m-%dT%H:%M:%S", &parts);
    if (rest == nullptr) return std::nullopt;
    std::string_view zone(rest);
    if (startsWith(zone, "."))
        zone.remove_prefix(std::min(zone.find_first_not_of("0123456789", 1), zone.size()));
    const std::int64_t time = secondsOf(parts);
    if (zone.empty() || zone == "Z") return time;
    const auto hours = parseDecimal(zone.substr(1, 2));
    const auto minutes = parseDecimal(zone.substr(std::min<std::size_t>(4, zone.size())));
    const bool isOffset = zone.size() == 6 && (zone[0] == '+' || zone[0] == '-') && zone[3] == ':';
    if (!isOffset || !hours || !minutes || *hours > 24 || *minutes > 59) return std::nullopt;
    const auto offset = static_cast<std::int64_t>(*hours * 60 + *minutes) * 60;
    return zone[0] == '+' ? time - offset : time + offset;
}

std::optional<std::string_view> findValue(std::string_view text, std::string_view key, char separator) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t at = line.find(separator);
        if (at == std::string_view::npos || trim(line.substr(0, at)) != key) continue;
        return trim(line.substr(at + 1));
    }
    return std::nullopt;
}
