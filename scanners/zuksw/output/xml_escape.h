#pragma once

#include <string>
#include <string_view>

namespace zuksw {

/** Appends bytes as XML in pure ASCII, for any reader to take. Well-formed UTF-8 above U+007E becomes numeric
 *  references; a byte that is no UTF-8, a control character and a character that XML does not allow become
 *  \xHH for each byte; a backslash before an x becomes \x5C, so that the mapping can be undone. */
void appendXmlText(std::string_view bytes, std::string* out);
/** The same for an attribute value in double quotes; white space other than blanks becomes references. */
void appendXmlAttribute(std::string_view bytes, std::string* out);

/** Appends ` name="value"`. */
void appendAttribute(std::string_view name, std::string_view value, std::string* out);

}  // namespace zuksw
