#pragma once

#include <vector>

#include "scanners/zuksw/language/element.h"
#include "scanners/zuksw/language/signature.h"

namespace zuksw {

/** Takes what stands inside <Metadata> apart into XML and templates. */
std::vector<MetadataPiece> readMetadata(const Element& metadata, Scope* scope);

}  // namespace zuksw
