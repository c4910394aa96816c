#pragma once

#include <string>

// "12.34": two decimals, with a point whatever the locale.
std::string twoDecimals(double number);
