#pragma once

#include <functional>
#include <string_view>

#include "scanners/shared/packages/package.h"

// apk's database of installed packages, `lib/apk/db/installed`: lines "X:value", an empty line after each
// package.
PackageList parseApkInstalled(std::string_view text);

// Calls `owned` with every file's path (relative to the root) and the name of the package that brought it.
void forEachApkPath(std::string_view text,
                    const std::function<void(const std::string&, std::string_view)>& owned);
