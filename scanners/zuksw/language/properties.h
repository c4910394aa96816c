#pragma once

#include <string_view>

#include "scanners/zuksw/language/scope.h"

namespace zuksw {

/** The kinds of object, as a set of Kind bits, that have the property. A result of another signature has
 *  whatever that signature reports, so Kind::kMatched has every property. */
unsigned kindsWithProperty(std::string_view property);

/** "size, mtime, mode": the properties of an object of one of these kinds, for a message. */
std::string_view propertiesOf(unsigned kinds);

}  // namespace zuksw
