#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "scanners/zuksw/files/file_tree.h"
#include "scanners/zuksw/setup/configuration.h"
#include "scanners/zuksw/walk/mounts.h"
#include "scanners/zuksw/walk/path_set.h"

namespace zuksw {

/** Where a scan may look. Paths are "/a/b"; the root directory is "". Immutable: any thread may ask. */
class Territory {
  public:
    /** mounts: of the running machine; none when they cannot be known. */
    Territory(const Configuration& configuration, const FileTree& tree, const std::vector<Mount>& mounts);

    /** Where to begin: without links, none inside another. */
    const std::vector<std::string>& roots() const { return roots_; }
    /** Roots that do not exist or are no directories. */
    const std::vector<std::string>& missingRoots() const { return missingRoots_; }

    /** Whether a search that is in the directory above may go into `directory`. */
    bool enters(std::string_view directory) const;
    /** Whether a file is not to be seen. */
    bool isExcluded(std::string_view path) const { return exclude_.contains(path); }
    /** Whether a link may lead through `directory`, inside the roots or not: it is neither excluded nor on a
     * file system that is not searched, which to look at may mount it. */
    bool isPassable(std::string_view directory) const;
    /** Whether a search from the roots can come to the path at all. */
    bool contains(std::string_view path) const;
    /** Whether the content of the file must not be read. */
    bool isDenied(std::string_view path) const { return deny_.contains(path); }

  private:
    void findRoots(const Configuration& configuration, const FileTree& tree);
    void judgeMounts(const Configuration& configuration, const FileTree& tree,
                     const std::vector<Mount>& mounts);

    std::vector<std::string> roots_;
    std::vector<std::string> missingRoots_;
    PathSet exclude_;
    PathSet deny_;
    std::unordered_set<std::string> foreignMounts_;  // points of mounts whose type is not searched
    std::unordered_set<std::string> closedMounts_;   // those, and of mounts that show something twice
};

}  // namespace zuksw
