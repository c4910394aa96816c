#include "scanners/zukhw/natural_sort.h"

#include <algorithm>

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view takeDigits(std::string_view* text) {
    std::size_t length = 0;
    while (length < text->size() && isDigit((*text)[length])) ++length;
    std::string_view digits = text->substr(0, length);
    text->remove_prefix(length);
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return digits;
}

// <0, 0 or >0; numbers of any length.
int compareNumbers(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
    return a.compare(b);
}

// Names that are compared begin alike, most of them.
std::size_t commonLetters(std::string_view a, std::string_view b) {
    const std::size_t shorter = std::min(a.size(), b.size());
    std::size_t length = 0;
    while (length < shorter && a[length] == b[length] && !isDigit(a[length])) ++length;
    return length;
}

int compareNaturally(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        if (isDigit(a.front()) && isDigit(b.front())) {
            const int order = compareNumbers(takeDigits(&a), takeDigits(&b));
            if (order != 0) return order;
            continue;
        }
        const std::size_t common = commonLetters(a, b);
        if (common == 0) {
            return static_cast<unsigned char>(a.front()) < static_cast<unsigned char>(b.front()) ? -1 : 1;
        }
        a.remove_prefix(common);
        b.remove_prefix(common);
    }
    return static_cast<int>(b.empty()) - static_cast<int>(a.empty());
}

}  // namespace

bool naturalLess(std::string_view a, std::string_view b) {
    const int order = compareNaturally(a, b);
    return order != 0 ? order < 0 : a < b;
}

void naturalSort(std::vector<std::string>* names) {
    std::sort(names->begin(), names->end(), naturalLess);
}
