#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/zuksw/language/name_glob.h"

namespace zuksw {

/** One step of a path glob: a name, or "**", which stands for any number of directories. */
struct GlobStep {
    bool anyDirectories = false;
    NameGlob name = {};
};

/** One alternative of a path glob, braces already resolved. */
using GlobSteps = std::vector<GlobStep>;

/** A glob over whole names or whole paths. */
class Glob {
  public:
    /** A glob for the last component of a path: no '/'. */
    static std::optional<Glob> parseName(std::string_view text, std::string* error);
    /** A glob for a path below some directory, "a/ * /b" or "../a"; for an absolute one without its first
     * '/'.
     *  "**" at the end matches everything below. */
    static std::optional<Glob> parsePath(std::string_view text, std::string* error);

    bool matches(std::string_view path) const;
    /** Whether something below the directory `path` can match. */
    bool reachesBelow(std::string_view path) const;

    const std::vector<GlobSteps>& alternatives() const { return alternatives_; }

  private:
    std::vector<GlobSteps> alternatives_;
};

/** Whether the last step of `steps` stands for exactly one name and no step is a wildcard. */
bool isLiteral(const GlobSteps& steps);

/** Whether one of the steps is "**". */
bool hasAnyDirectories(const GlobSteps& steps);

/** The leading steps that are plain names, without the last step, joined by '/'. */
std::string literalDirectory(const GlobSteps& steps);

}  // namespace zuksw
