#pragma once

#include <string_view>

#include "scanners/shared/packages/package.h"

// The packages of opkg's `status` file.
PackageList parseOpkgStatus(std::string_view text);
