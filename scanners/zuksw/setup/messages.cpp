#include "scanners/zuksw/setup/messages.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "platform/file_descriptor.h"
#include "scanners/zuksw/files/read_file.h"

namespace zuksw {
namespace {

constexpr std::size_t kMaxInput = std::size_t{64} << 20U;

}  // namespace

void say(const char* level, const std::string& text) {
    std::string line = std::string("zuksw: ") + level + ": " + text;
    for (char& c : line) {
        if (c == '\n' || c == '\r') c = ' ';
    }
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
}

std::optional<std::string> readInput(const std::string& path, std::string* error) {
    const FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    std::optional<std::string> bytes;
    if (fd.valid()) bytes = readAll(fd.get(), kMaxInput);
    if (!bytes) {
        const bool tooLong = fd.valid() && errno == EFBIG;
        *error = tooLong ? "longer than 64 MiB" : std::strerror(errno);  // NOLINT(concurrency-mt-unsafe)
    }
    return bytes;
}

}  // namespace zuksw
