#include "scanners/zuksw/files/read_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace zuksw {

std::optional<std::string> readAll(int fd, std::size_t limit) {
    std::string data;
    struct stat facts = {};
    if (::fstat(fd, &facts) == 0 && facts.st_size > 0)
        data.reserve(std::min(static_cast<std::size_t>(facts.st_size), limit));
    std::array<char, 64 * 1024> block = {};
    while (true) {
        const ssize_t count = ::read(fd, block.data(), block.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) return data;
        data.append(block.data(), static_cast<std::size_t>(count));
        if (data.size() <= limit) continue;
        errno = EFBIG;
        return std::nullopt;
    }
}

std::optional<std::string> readFile(const FileTree& tree, std::string_view path, std::size_t limit) {
    const std::optional<std::string> real = tree.resolve(path);
    if (!real) return std::nullopt;
    const FileDescriptor fd = tree.openRegular(*real);
    if (!fd.valid()) return std::nullopt;
    return readAll(fd.get(), limit);
}

}  // namespace zuksw
