#pragma once

#include <optional>
#include <string_view>

namespace zuksw {

// One function a scheme: -1, 0 or 1 as `a` is before, equal to or after `b`; nothing when the scheme
// refuses either value. All take linear time, whatever the text.

std::optional<int> compareGeneric(std::string_view a, std::string_view b);
std::optional<int> compareDeb(std::string_view a, std::string_view b);
std::optional<int> compareRpm(std::string_view a, std::string_view b);
std::optional<int> compareApk(std::string_view a, std::string_view b);
std::optional<int> comparePacman(std::string_view a, std::string_view b);
std::optional<int> compareSemver(std::string_view a, std::string_view b);
std::optional<int> comparePep440(std::string_view a, std::string_view b);
std::optional<int> compareMaven(std::string_view a, std::string_view b);
std::optional<int> compareGem(std::string_view a, std::string_view b);
std::optional<int> compareNumber(std::string_view a, std::string_view b);
std::optional<int> compareText(std::string_view a, std::string_view b);
std::optional<int> compareTextNoCase(std::string_view a, std::string_view b);

}  // namespace zuksw
