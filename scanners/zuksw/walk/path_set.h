#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "scanners/zuksw/language/path_glob.h"

namespace zuksw {

/** The paths that some absolute globs match. Whole paths and names at any depth are looked up, so that asking
 *  for every directory of a machine costs little. */
class PathSet {
  public:
    /** Globs that do not parse are left out. */
    explicit PathSet(const std::vector<std::string>& globs);

    /** path: "/a/b" */
    bool contains(std::string_view path) const;

  private:
    std::unordered_set<std::string> paths_;
    std::unordered_set<std::string> names_;  // of "**/name"
    std::vector<Glob> others_;
};

}  // namespace zuksw
