#pragma once

#include <string_view>

namespace zuksw {

/** A name that Input, `as`, captures and Set may bind: a letter or underscore, then up to 63 letters,
 *  digits or underscores (ASCII only, whatever the locale). */
bool isIdentifier(std::string_view text);

}  // namespace zuksw
