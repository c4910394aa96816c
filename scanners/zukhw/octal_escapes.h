#pragma once

#include <string>
#include <string_view>

// Undoes the kernel's writing of blanks and backslashes in table files: "\040" is a space.
std::string decodeOctalEscapes(std::string_view text);
