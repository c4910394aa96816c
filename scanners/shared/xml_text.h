#pragma once

#include <string>
#include <string_view>

// Appends `bytes` as XML 1.0 character data in UTF-8: & < > " escaped, bytes that are not UTF-8 as U+FFFD
// (one for each maximal broken sequence), characters that XML does not allow left out.
void appendXmlText(std::string* out, std::string_view bytes);

// The same without escaping: well-formed UTF-8 that holds XML characters only.
std::string toXmlCharacters(std::string_view bytes);
