#pragma once

#include <string>
#include <string_view>

// A UUID in lower case; empty for a text that is none.
std::string cleanUuid(std::string_view text);
