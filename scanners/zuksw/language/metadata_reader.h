#pragma once

#include <vector>

#include "scanners/zuksw/language/element.h"
#include "scanners/zuksw/language/signature.h"

namespace zuksw {

/** Takes <Metadata> apart into XML and templates, without its end tag; nothing for an empty one. */
std::vector<MetadataPiece> readMetadata(const Element& metadata, Scope* scope);

}  // namespace zuksw
