#pragma once

#include <string>
#include <vector>

// Splits a command line into words at blanks outside double quotes. The quotes are dropped and may stand
// anywhere in a word; "" is an empty word, and a quote that is never closed reaches to the end. Each
// character is narrowed to its low byte after the splitting, so no wide character turns into a quote.
std::vector<std::string> splitCommandLine(const wchar_t* command);
