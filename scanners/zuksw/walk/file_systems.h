#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "scanners/zuksw/walk/mounts.h"

namespace zuksw {

/** Decides which mounts a search enters. */
class FileSystemChoice {
  public:
    /** text: types separated by commas; `local` stands for those of disks, `all` for every one. */
    explicit FileSystemChoice(std::string_view text);

    /** Whether file systems of that type are searched. Those of the kernel and autofs never are. */
    bool accepts(std::string_view type) const;

  private:
    bool all_ = false;
    std::vector<std::string> types_;
};

/** Whether the type is one in which the kernel shows its own state, not files of somebody. */
bool isKernelType(std::string_view type);

}  // namespace zuksw
