#include "scanners/zuksw/versions/characters.h"

#include <algorithm>

namespace zuksw {

namespace {

std::string_view withoutLeadingZeros(std::string_view digits) {
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return digits;
}

}  // namespace

std::string_view trimSpace(std::string_view text) {
    takeWhile(text, isSpace);
    while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
    return text;
}

int compareDigits(std::string_view a, std::string_view b) {
    a = withoutLeadingZeros(a);
    b = withoutLeadingZeros(b);
    if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
    return signOf(a.compare(b));
}

int compareNoCase(std::string_view a, std::string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        const auto left = static_cast<unsigned char>(toLower(a[i]));
        const auto right = static_cast<unsigned char>(toLower(b[i]));
        if (left != right) return left < right ? -1 : 1;
    }
    return (a.size() > b.size()) - (a.size() < b.size());
}

}  // namespace zuksw
