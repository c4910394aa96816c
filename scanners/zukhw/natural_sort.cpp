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

// How much of both is alike and can be passed over: most names that are compared begin alike. A number that
// ends there may go on in one of them and belongs to the rest.
std::size_t commonStart(std::string_view a, std::string_view b) {
    const std::size_t shorter = std::min(a.size(), b.size());
    std::size_t length = 0;
    while (length < shorter && a[length] == b[length]) ++length;
    while (length > 0 && isDigit(a[length - 1])) --length;
    return length;
}

int compareNaturally(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        if (isDigit(a.front()) && isDigit(b.front())) {
            const int order = compareNumbers(takeDigits(&a), takeDigits(&b));
            if (order != 0) return order;
            continue;
        }
        if (a.front() != b.front())
            return static_cast<unsigned char>(a.front()) < static_cast<unsigned char>(b.front()) ? -1 : 1;
        a.remove_prefix(1);
        b.remove_prefix(1);
    }
    return static_cast<int>(b.empty()) - static_cast<int>(a.empty());
}

}  // namespace

int naturalOrder(std::string_view a, std::string_view b) {
    const std::size_t common = commonStart(a, b);
    const int order = compareNaturally(a.substr(common), b.substr(common));
    return order != 0 ? order : a.compare(b);
}

bool naturalLess(std::string_view a, std::string_view b) {
    return naturalOrder(a, b) < 0;
}

void naturalSort(std::vector<std::string>* names) {
    std::sort(names->begin(), names->end(), naturalLess);
}
