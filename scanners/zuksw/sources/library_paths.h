#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/zuksw/files/file_tree.h"
#include "scanners/zuksw/formats/elf.h"
#include "scanners/zuksw/formats/elf_dynamic.h"

namespace zuksw {

/** A line of ld.so.conf: a directory, or a pattern for files whose lines stand in its place. */
struct LoaderLine {
    bool isInclude;
    std::string path;
};

std::vector<LoaderLine> parseLoaderConfiguration(std::string_view text);

/** Where the dynamic loader of the scanned machine looks for libraries. No loader is ever run. Any thread may
 *  ask. */
class LibraryPaths {
  public:
    explicit LibraryPaths(const FileTree& tree) : tree_(tree) {}

    /** The paths at which `needed` may lie for a program in `origin`, the first that exists and fits is it.
     */
    std::vector<std::string> candidates(std::string_view needed, const std::string& origin, const Elf& elf,
                                        const ElfDynamic& dynamic);

  private:
    void readConfiguration(const std::string& path, int depth);
    void include(const std::string& pattern, const std::string& from, int depth);

    const FileTree& tree_;
    std::once_flag once_;
    int filesRead_ = 0;
    std::vector<std::string> configured_;  // by ld.so.conf
};

}  // namespace zuksw
