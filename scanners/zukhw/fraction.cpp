#include "scanners/zukhw/fraction.h"

#include <cmath>

std::string twoDecimals(double number) {
    const auto hundredths = static_cast<long long>(std::llround(number * 100));
    const std::string rest = std::to_string(hundredths % 100);
    return std::to_string(hundredths / 100) + (rest.size() < 2 ? ".0" : ".") + rest;
}

std::string_view decimalFraction(std::string_view text) {
    const auto isNumber = [](std::string_view digits) {
        return !digits.empty() && digits.find_first_not_of("0123456789") == std::string_view::npos;
    };
    const std::size_t point = text.find('.');
    const std::string_view whole = text.substr(0, point);
    const bool good = isNumber(whole) && (whole.size() == 1 || whole[0] != '0') &&
                      (point == std::string_view::npos || isNumber(text.substr(point + 1)));
    return good ? text : std::string_view();
}
