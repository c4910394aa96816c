#pragma once

#include <re2/re2.h>

#include <string>

namespace zuksw {

/** Why the engine takes no such pattern, and what to write. */
std::string explainPattern(const re2::RE2& engine);

}  // namespace zuksw
