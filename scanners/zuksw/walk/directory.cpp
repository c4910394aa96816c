#include "scanners/zuksw/walk/directory.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <string>

namespace zuksw {

bool DirectoryReader::fill() {
    const long count = ::syscall(SYS_getdents64, fd_.get(), buffer_->data(), buffer_->size());
    if (count < 0) error_ = errno;
    at_ = 0;
    end_ = count > 0 ? static_cast<std::size_t>(count) : 0;
    return end_ > 0;
}

bool DirectoryReader::next(Entry* entry) {
    while (at_ < end_ || fill()) {
        // The kernel's linux_dirent64 is laid out as glibc's dirent64.
        const auto* record = reinterpret_cast<const dirent64*>(buffer_->data() + at_);
        at_ += record->d_reclen;
        const char* name = static_cast<const char*>(record->d_name);
        if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'))) continue;
        *entry = {name, record->d_type};
        return true;
    }
    return false;
}

unsigned char typeOfEntry(int directory, std::string_view name) {
    struct stat facts = {};
    const std::string copy(name);
    if (::fstatat(directory, copy.c_str(), &facts, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) != 0)
        return DT_UNKNOWN;
    return static_cast<unsigned char>(IFTODT(facts.st_mode));
}

}  // namespace zuksw
