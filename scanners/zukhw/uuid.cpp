#include "scanners/zukhw/uuid.h"

#include "scanners/zukhw/text.h"

std::string cleanUuid(std::string_view text) {
    constexpr std::string_view kForm = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string uuid = toLower(trim(text));
    if (uuid.size() != kForm.size()) return "";
    for (std::size_t i = 0; i < kForm.size(); ++i) {
        const bool good = kForm[i] == '-' ? uuid[i] == '-' : kDigits.find(uuid[i]) != std::string_view::npos;
        if (!good) return "";
    }
    return uuid;
}
