#include "scanners/zukhw/placeholders.h"

#include <algorithm>
#include <string>

#include "scanners/zukhw/text.h"

namespace {

// Lower case. A '*' at the end stands for anything.
constexpr std::string_view kPlaceholders[] = {
    "to be filled by o.e.m.",
    "to be filled by o.e.m",
    "default string",
    "system product name",
    "system manufacturer",
    "system name",
    "system version",
    "system serial number",
    "base board serial number",
    "chassis serial number",
    "chassis manufacture",
    "chassis version",
    "system sku",
    "system sku#",
    "system skunumber",
    "sku",
    "not specified",
    "not applicable",
    "not available",
    "not present",
    "n/a",
    "none",
    "null",
    "unknow",
    "unknown",
    "undefined",
    "invalid",
    "empty",
    "[empty]",
    "no dimm",
    "oem",
    "o.e.m.",
    "default",
    "type1productconfigid",
    "type1family",
    "type2 - board *",
    "asset-1234567890",
    "asset tag",
    "no asset tag",
    "no asset information",
    "123456789012345678",
    "123456789",
};

// A name and the number of a slot: "Manufacturer0", "ModulePartNumber01".
constexpr std::string_view kNumbered[] = {
    "manufacturer", "partnum", "sernum", "assettagnum", "modulepartnumber", "modulemanufacturer",
};

constexpr std::string_view kCounting = "01234567890123";
constexpr std::size_t kShortestCounting = 8;
constexpr std::size_t kShortestRepeat = 8;
constexpr std::string_view kFillers = "0fx.-_*#";

bool isNumbered(std::string_view text) {
    for (const std::string_view name : kNumbered) {
        if (!startsWith(text, name) || text.size() == name.size()) continue;
        const std::string_view number = text.substr(name.size());
        if (number.find_first_not_of("0123456789") == std::string_view::npos) return true;
    }
    return false;
}

bool isOneCharacterRepeated(std::string_view text) {
    if (text.find_first_not_of(text.front()) != std::string_view::npos) return false;
    return text.size() >= kShortestRepeat || kFillers.find(text.front()) != std::string_view::npos;
}

bool matches(std::string_view text, std::string_view pattern) {
    if (!endsWith(pattern, "*")) return text == pattern;
    pattern.remove_suffix(1);
    return startsWith(text, pattern);
}

}  // namespace

bool isPlaceholder(std::string_view text) {
    if (text.empty()) return true;
    const std::string lower = toLower(text);
    const auto fits = [&](std::string_view pattern) { return matches(lower, pattern); };
    if (std::any_of(std::begin(kPlaceholders), std::end(kPlaceholders), fits)) return true;
    if (lower.size() >= kShortestCounting && startsWith(kCounting, lower)) return true;
    return isNumbered(lower) || isOneCharacterRepeated(lower);
}

bool isPlaceholderUuid(std::string_view uuid) {
    // The last one is in the firmware of many unrelated boards.
    static constexpr std::string_view kShared[] = {
        "00000000-0000-0000-0000-000000000000",
        "ffffffff-ffff-ffff-ffff-ffffffffffff",
        "03000200-0400-0500-0006-000700080009",
    };
    const std::string lower = toLower(uuid);
    return std::find(std::begin(kShared), std::end(kShared), lower) != std::end(kShared);
}
