#pragma once

#include <string>
#include <string_view>

// The bytes in the alphabet of RFC 4648, with padding and without line ends.
std::string base64(std::string_view bytes);
