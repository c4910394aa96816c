#pragma once

#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "scanners/shared/packages/package.h"

// The texts of dpkg's database; dpkg_database.h knows where they lie.

// The packages of `status`.
PackageList parseDpkgStatus(std::string_view text);

// The package of a file in `status.d`: images without dpkg keep a copy of each package's control file there,
// so there is no Status field and what is listed is installed.
PackageList parseDpkgControl(std::string_view text);

// Name and architecture of the packages that apt's extended_states calls automatically installed.
std::set<std::pair<std::string, std::string>> parseAptAutomatic(std::string_view text);
