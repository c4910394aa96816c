#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zuksw {

/** What to write instead of `wrong`: "did you mean 'name'?" when one of the words is close, otherwise
 *  "remove it". */
std::string suggest(std::string_view wrong, const std::vector<std::string_view>& words);

}  // namespace zuksw
