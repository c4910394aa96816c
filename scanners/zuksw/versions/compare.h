#pragma once

#include <optional>
#include <string_view>

namespace zuksw {

/** How the text of a version is read and ordered. */
enum class Scheme {
    kGeneric,
    kDeb,
    kRpm,
    kApk,
    kPacman,
    kSemver,
    kPep440,
    kMaven,
    kGem,
    kNumber,
    kText,
    kTextNoCase,
};

/** The scheme that signatures call `name` ("generic", "deb", ...); nothing when there is none. */
std::optional<Scheme> schemeByName(std::string_view name);

/** The name that signatures use. */
std::string_view schemeName(Scheme scheme);

/** -1, 0 or 1 as `a` is before, equal to or after `b`; nothing when the scheme refuses either value
 *  ("foo" is no pep440 version). Linear in the length of the texts. */
std::optional<int> compareVersions(Scheme scheme, std::string_view a, std::string_view b);

}  // namespace zuksw
