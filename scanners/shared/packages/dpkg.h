#pragma once

#include <string_view>
#include <vector>

#include "scanners/shared/packages/package.h"

// The texts of dpkg's database; dpkg_database.h knows where they lie.

// The packages of `status`.
PackageList parseDpkgStatus(std::string_view text);

// The package of a file in `status.d`: images without dpkg keep a copy of each package's control file there,
// so there is no Status field and what is listed is installed.
PackageList parseDpkgControl(std::string_view text);

// Marks those that apt's extended_states calls automatically installed.
void markAutomatic(std::string_view aptStates, std::vector<Package>& packages);
