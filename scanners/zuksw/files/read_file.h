#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "scanners/zuksw/files/file_tree.h"

namespace zuksw {

/** The bytes of a regular file, links followed inside the tree; nothing, with the reason in errno, when it is
 *  not there, not regular, not readable or longer than `limit`. */
std::optional<std::string> readFile(const FileTree& tree, std::string_view path, std::size_t limit);

/** The bytes behind a descriptor up to its end; nothing on an error or when there are more than `limit`. */
std::optional<std::string> readAll(int fd, std::size_t limit);

}  // namespace zuksw
