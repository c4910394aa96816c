#include "scanners/zuksw/versions/characters.h"
#include "scanners/zuksw/versions/schemes.h"

namespace zuksw {

namespace {

struct Decimal {
    bool negative = false;
    std::string_view whole;
    std::string_view fraction;  // without zeros at its end
};

std::optional<Decimal> parse(std::string_view text) {
    text = trimSpace(text);
    Decimal number;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        number.negative = text.front() == '-';
        text.remove_prefix(1);
    }
    number.whole = takeWhile(text, isDigit);
    if (!text.empty() && text.front() == '.') {
        text.remove_prefix(1);
        number.fraction = takeWhile(text, isDigit);
    }
    if (!text.empty() || (number.whole.empty() && number.fraction.empty())) return std::nullopt;
    number.fraction = number.fraction.substr(0, number.fraction.find_last_not_of('0') + 1);
    const bool zero = number.fraction.empty() && compareDigits(number.whole, "") == 0;
    if (zero) number.negative = false;
    return number;
}

int compareMagnitude(const Decimal& a, const Decimal& b) {
    if (const int order = compareDigits(a.whole, b.whole)) return order;
    return signOf(a.fraction.compare(b.fraction));
}

}  // namespace

std::optional<int> compareNumber(std::string_view a, std::string_view b) {
    const std::optional<Decimal> left = parse(a);
    const std::optional<Decimal> right = parse(b);
    if (!left || !right) return std::nullopt;
    if (left->negative != right->negative) return left->negative ? -1 : 1;
    return left->negative ? compareMagnitude(*right, *left) : compareMagnitude(*left, *right);
}

}  // namespace zuksw
