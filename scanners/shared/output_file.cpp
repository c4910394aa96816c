#include "scanners/shared/output_file.h"

#include <fcntl.h>

#include <cerrno>
#include <cstring>

OutputFile::OutputFile(const std::string& path)
    : fd_(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC | O_NOCTTY, 0600)) {
    // Started without standard output, we would get its number, and what we print would land in the file.
    if (fd_.valid() && fd_.get() <= STDERR_FILENO) {
        fd_ = FileDescriptor(::fcntl(fd_.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    }
    if (!fd_.valid()) fail();
}

bool OutputFile::fail() {
    error_ = std::strerror(errno);  // NOLINT(concurrency-mt-unsafe): scanners have one thread
    return false;
}

bool OutputFile::write(std::string_view bytes) {
    if (!error_.empty()) return false;
    while (!bytes.empty()) {
        const ssize_t count = ::write(fd_.get(), bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return fail();
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool OutputFile::close() {
    if (!error_.empty()) return false;
    return ::close(fd_.release()) == 0 || fail();
}
