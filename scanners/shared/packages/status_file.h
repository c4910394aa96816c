#pragma once

#include <string_view>

#include "scanners/shared/packages/package.h"

// The status files of dpkg and opkg: deb822 text, a paragraph a package.
struct StatusDialect {
    std::string_view manager;
    bool statusNeeded;        // false: what is listed without a Status field is installed
    std::uint64_t sizeUnit;   // bytes that 1 in Installed-Size stands for; 0 when nobody knows
    bool finalNewlineNeeded;  // a text that ends inside a line was cut
};

// All packages in their order, those that are not installed included. A paragraph without name, without a
// version though its files are there, or with a status that cannot be understood is broken.
PackageList parseStatusFile(std::string_view text, const StatusDialect& dialect);
