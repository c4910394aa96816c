#pragma once

#include <string>
#include <string_view>

// "12.34": two decimals, with a point whatever the locale.
std::string twoDecimals(double number);

// "8.97", or a whole number; empty for a text that is none.
std::string_view decimalFraction(std::string_view text);
