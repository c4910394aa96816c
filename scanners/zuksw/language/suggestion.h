#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zuksw {

/** The word that `wrong` was most likely meant to be; empty when none is close. */
std::string_view closest(std::string_view wrong, const std::vector<std::string_view>& words);

/** What to write instead of `wrong`: "did you mean 'name'?" when one of the words is close, otherwise
 *  "remove it". */
std::string suggest(std::string_view wrong, const std::vector<std::string_view>& words);

}  // namespace zuksw
