#pragma once

#include "scanners/zuksw/sources/packages.h"
#include "scanners/zuksw/walk/file_finder.h"

namespace zuksw {

/** What conditions want to be looked for before the first of them is evaluated. */
struct Demand {
    FileFinder& files;
    Packages& packages;
    bool tags = false;
};

}  // namespace zuksw
