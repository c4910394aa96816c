#include "platform/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {
// Unlike strerror, the same for every locale and safe with threads.
const char* describeError() {
    const char* text = strerrordesc_np(errno);
    return text == nullptr ? "unknown error" : text;
}
}  // namespace

InputFile::InputFile(const char* path) : file_(open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {
    struct stat status {};
    if (!file_.valid() || fstat(file_.get(), &status) != 0) {
        failure_ = describeError();
    } else if (!S_ISREG(status.st_mode)) {
        failure_ = "not a regular file";
    }
}

std::size_t InputFile::read(void* buffer, std::size_t size) {
    if (failure_ != nullptr) return 0;
    ssize_t length = 0;
    do {
        length = ::read(file_.get(), buffer, size);
    } while (length < 0 && errno == EINTR);
    if (length < 0) failure_ = describeError();
    return length < 0 ? 0 : static_cast<std::size_t>(length);
}
