#pragma once

#include <expat.h>

#include <string>
#include <string_view>

namespace zuksw {

/** Why a document is not well-formed, and what to do. open: the innermost element that is open there, or
 *  nothing. */
std::string explainXml(XML_Error error, std::string_view open);

}  // namespace zuksw
