#include "scanners/shared/random_access.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

bool MemoryAccess::read(std::uint64_t offset, std::size_t length, std::string* piece) const {
    piece->clear();
    if (offset > bytes_.size() || length > bytes_.size() - offset) return false;
    piece->assign(bytes_.substr(static_cast<std::size_t>(offset), length));
    return true;
}

FileAccess::FileAccess(FileDescriptor file) : file_(std::move(file)) {
    struct stat facts = {};
    if (fstat(file_.get(), &facts) == 0 && facts.st_size > 0)
        size_ = static_cast<std::uint64_t>(facts.st_size);
}

bool FileAccess::read(std::uint64_t offset, std::size_t length, std::string* piece) const {
    const bool exists = offset <= size_ && length <= size_ - offset;
    piece->resize(exists ? length : 0);  // without clearing it first, since all of it would be zeroed then
    if (!exists) return false;
    std::size_t done = 0;
    while (done < length) {
        const ssize_t got =
            pread(file_.get(), piece->data() + done, length - done, static_cast<off_t>(offset + done));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) {  // the file has become shorter, or cannot be read
            piece->clear();
            return false;
        }
        done += static_cast<std::size_t>(got);
    }
    return true;
}
