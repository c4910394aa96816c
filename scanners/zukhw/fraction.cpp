#include "scanners/zukhw/fraction.h"

#include <cmath>

std::string twoDecimals(double number) {
    const auto hundredths = static_cast<long long>(std::llround(number * 100));
    const std::string rest = std::to_string(hundredths % 100);
    return std::to_string(hundredths / 100) + (rest.size() < 2 ? ".0" : ".") + rest;
}
