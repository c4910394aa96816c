#pragma once

#include <string>
#include <string_view>
#include <vector>

// The text as a JSON string in UTF-8. What must not reach a terminal as it is is escaped, too.
std::string quoted(std::wstring_view text);

// The items between brackets, one a line, indented by `depth` steps.
std::string bracketed(char open, const std::vector<std::string>& items, char close, std::size_t depth);
