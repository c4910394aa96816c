#include "scanners/shared/rooted_fs.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "scanners/shared/affix.h"

namespace {

constexpr int kMaxLinks = 40;  // as the kernel's own limit
constexpr int kMaxRetries = 8;
constexpr std::size_t kFirstRead = 4096;
constexpr int kReading = O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;

std::string relative(std::string_view path) {
    path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
    return path.empty() ? std::string(".") : std::string(path);
}

// The kernel makes these files itself: none of them is a device node or a pipe, whatever users do.
bool isKernelMade(std::string_view path) {
    return startsWith(path, "proc/") || startsWith(path, "sys/");
}

ReadStatus statusOf(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
        case ENODEV:
        case ELOOP:
            return ReadStatus::Missing;
        case EACCES:
        case EPERM:
            return ReadStatus::Denied;
        default:
            return ReadStatus::Unusable;
    }
}

ssize_t readSome(int fd, char* buffer, std::size_t size) {
    ssize_t count = 0;
    do {
        count = ::read(fd, buffer, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

// Kernel-made files have no size of their own, and say 0 or a page.
std::size_t sizeOf(int fd) {
    struct stat status {};
    return ::fstat(fd, &status) == 0 && status.st_size > 0 ? static_cast<std::size_t>(status.st_size) : 0;
}

// Opens what an O_PATH descriptor stands for, without walking the path a second time: between a look at the
// file's type and the opening, its owner could put a device node in its place.
int reopen(int fd) {
    const std::string self = "/proc/self/fd/" + std::to_string(fd);
    return ::open(self.c_str(), kReading);
}

// Access lists grant no more than the group's bits.
bool onlyRootChanges(const struct stat& directory) {
    return directory.st_uid == 0 && (directory.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

FileFacts factsOf(const struct statx& from) {
    FileFacts facts;
    if (S_ISREG(from.stx_mode)) facts.type = FileFacts::Type::Regular;
    if (S_ISDIR(from.stx_mode)) facts.type = FileFacts::Type::Directory;
    if (S_ISLNK(from.stx_mode)) facts.type = FileFacts::Type::Link;
    facts.size = from.stx_size;
    facts.mode = from.stx_mode & 07777U;
    facts.userId = from.stx_uid;
    facts.modified = from.stx_mtime.tv_sec;
    facts.changed = from.stx_ctime.tv_sec;
    if ((from.stx_mask & STATX_BTIME) != 0) facts.born = from.stx_btime.tv_sec;
    return facts;
}

}  // namespace

RootedFs RootedFs::ofLiveMachine() {
    return RootedFs(FileDescriptor(::open("/", O_PATH | O_DIRECTORY | O_CLOEXEC)), true, Resolver::Kernel);
}

std::optional<RootedFs> RootedFs::below(const std::string& root, Resolver resolver) {
    FileDescriptor fd(::open(root.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!fd.valid()) return std::nullopt;
    return RootedFs(std::move(fd), false, resolver);
}

void RootedFs::stayIn(std::string_view directory) const {
    if (!live_) return;
    std::string path = relative(directory);
    if (!endsWith(path, "/")) path += '/';
    if (near_ == path) return;
    nearDirectory_.reset(::openat(root_.get(), path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    near_ = nearDirectory_.valid() ? path : "";
    nearIsRoots_.reset();
}

// A path of the kernel's has ten parts and more, and each is looked up again for every file.
RootedFs::Place RootedFs::placeOf(const std::string& path) const {
    const bool near = !near_.empty() && path.size() > near_.size() && startsWith(path, near_);
    return near ? Place{nearDirectory_.get(), path.c_str() + near_.size()} : Place{root_.get(), path.c_str()};
}

// Returns a descriptor, or -1 with errno. On the live machine the root is "/" and links need no confinement.
int RootedFs::openInside(const std::string& path, int flags) const {
    flags |= O_CLOEXEC;
    if (live_) {
        const Place place = placeOf(path);
        return ::openat(place.directory, place.path, flags);
    }
    if (resolver_ == Resolver::Own) return openResolved(path, flags);
    open_how how{};
    how.flags = static_cast<std::uint64_t>(flags);
    how.resolve = RESOLVE_IN_ROOT;
    long fd = -1;
    for (int attempt = 0; attempt < kMaxRetries; ++attempt) {
        fd = ::syscall(SYS_openat2, root_.get(), path.c_str(), &how, sizeof how);
        if (fd >= 0 || errno != EAGAIN) break;  // EAGAIN: something below the root was being renamed
    }
    if (fd >= 0 || (errno != ENOSYS && errno != EPERM)) return static_cast<int>(fd);
    resolver_ = Resolver::Own;  // an old kernel, or a sandbox that refuses calls it does not know
    return openResolved(path, flags);
}

int RootedFs::openResolved(const std::string& path, int flags) const {
    const bool linkItself = (flags & O_NOFOLLOW) != 0;
    const std::size_t slash = path.find_last_of('/');
    std::optional<std::string> target;
    if (!linkItself) {
        target = resolve(path);
    } else if (slash == std::string::npos) {
        target = path;
    } else if ((target = resolve(path.substr(0, slash)))) {
        *target += path.substr(slash);
    }
    if (!target) {
        errno = ENOENT;
        return -1;
    }
    return ::openat(root_.get(), relative(*target).c_str(), flags | O_NOFOLLOW);
}

std::optional<std::string> RootedFs::resolve(std::string_view path) const {
    std::string resolved;
    std::string pending = relative(path);
    std::size_t behindLink = pending.size();  // how much of it stands behind the text of a kernel's link
    int links = 0;
    while (!pending.empty()) {
        const std::size_t slash = pending.find('/');
        const std::string name = pending.substr(0, slash);
        pending.erase(0, slash == std::string::npos ? slash : slash + 1);
        if (name.empty() || name == ".") continue;
        if (name == "..") {
            const std::size_t parent = resolved.find_last_of('/');
            resolved.erase(parent == std::string::npos ? 0 : parent);
            continue;
        }
        std::string next = resolved;
        if (!next.empty()) next += '/';
        next += name;
        // The kernel's own links lead to their places by way of no others.
        if (pending.size() > behindLink) plainPlaces_.insert(next);
        if (plainPlaces_.count(next) != 0) {
            resolved = next;
            continue;
        }
        std::array<char, 4096> target;
        const ssize_t length = ::readlinkat(root_.get(), next.c_str(), target.data(), target.size());
        if (length < 0) {
            if (errno != EINVAL) return std::nullopt;  // EINVAL: there, and not a link
            if (live_) plainPlaces_.insert(next);
            resolved = next;
            continue;
        }
        if (++links > kMaxLinks) return std::nullopt;
        const std::string_view text(target.data(), static_cast<std::size_t>(length));
        if (startsWith(text, "/")) resolved.clear();
        const std::size_t rest = pending.size();
        pending.insert(0, 1, '/').insert(0, text);
        const bool isKernels = live_ && startsWith(next, "sys/") && !startsWith(text, "/");
        behindLink = isKernels ? rest : pending.size();
    }
    return resolved;
}

// Where nobody but root can change what a name stands for, a look at the file's type is enough, and opening
// it takes half of the time. Gives nothing where the look is not enough.
FileDescriptor RootedFs::openNear(const std::string& path) const {
    const Place place = placeOf(path);
    if (place.directory != nearDirectory_.get() || std::strchr(place.path, '/') != nullptr)
        return FileDescriptor();
    struct stat status {};
    if (!nearIsRoots_) nearIsRoots_ = ::fstat(place.directory, &status) == 0 && onlyRootChanges(status);
    if (!*nearIsRoots_ || ::fstatat(place.directory, place.path, &status, AT_SYMLINK_NOFOLLOW) != 0 ||
        !S_ISREG(status.st_mode))
        return FileDescriptor();
    return FileDescriptor(::openat(place.directory, place.path, kReading | O_NOFOLLOW));
}

FileDescriptor RootedFs::openRegular(std::string_view path) const {
    const std::string name = relative(path);
    if (live_ && isKernelMade(name)) return FileDescriptor(openInside(name, O_RDONLY));
    if (live_ && !near_.empty()) {
        FileDescriptor file = openNear(name);
        if (file.valid()) return file;
    }
    const FileDescriptor place(openInside(name, O_PATH));
    if (!place.valid()) return FileDescriptor();
    struct stat status {};
    if (::fstat(place.get(), &status) != 0) return FileDescriptor();
    if (!S_ISREG(status.st_mode)) {
        errno = EINVAL;
        return FileDescriptor();
    }
    return FileDescriptor(reopen(place.get()));
}

ReadStatus RootedFs::read(std::string_view path, std::string* data, std::size_t limit) const {
    data->clear();
    const FileDescriptor fd = openRegular(path);
    if (!fd.valid()) return statusOf(errno);
    std::array<char, kFirstRead> first;
    ssize_t count = readSome(fd.get(), first.data(), first.size());
    if (count > 0) data->assign(first.data(), static_cast<std::size_t>(count));
    // Less than a page is the end of every file but those of /proc, and there of settings: that saves the
    // read that finds the end.
    const std::string name = relative(path);
    const bool mayBeShort = startsWith(name, "proc/") && !startsWith(name, "proc/sys/");
    const auto isFull = [](ssize_t read) { return read >= static_cast<ssize_t>(kFirstRead); };
    const std::size_t expected = isFull(count) ? sizeOf(fd.get()) : 0;
    data->reserve(std::min(expected, limit));
    while ((mayBeShort ? count > 0 : isFull(count)) && data->size() <= limit && data->size() != expected) {
        const std::size_t before = data->size();
        data->resize(std::max(data->capacity(), before + kFirstRead));
        count = readSome(fd.get(), data->data() + before, data->size() - before);
        data->resize(before + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    if (count >= 0 && data->size() <= limit) return ReadStatus::Ok;
    const int error = count < 0 ? errno : EFBIG;
    data->clear();
    return statusOf(error);
}

ReadStatus RootedFs::readHead(std::string_view path, std::string* data, std::size_t size) const {
    data->clear();
    const FileDescriptor fd = openRegular(path);
    if (!fd.valid()) return statusOf(errno);
    while (data->size() < size) {
        const std::size_t before = data->size();
        data->resize(size);
        const ssize_t count = readSome(fd.get(), data->data() + before, size - before);
        data->resize(before + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (count < 0) return statusOf(errno);
        if (count == 0) break;
    }
    return ReadStatus::Ok;
}

ReadStatus RootedFs::list(std::string_view path, std::vector<std::string>* names,
                          std::vector<std::string>* links) const {
    names->clear();
    if (links != nullptr) links->clear();
    const std::string name = relative(path);
    FileDescriptor directory(openInside(name, O_RDONLY | O_DIRECTORY));
    if (!directory.valid()) return statusOf(errno);
    long count = 0;
    do {
        alignas(dirent64) std::array<char, 32768> buffer;
        count = ::syscall(SYS_getdents64, directory.get(), buffer.data(), buffer.size());
        for (long at = 0; at < count;) {
            const auto* entry = reinterpret_cast<const dirent64*>(buffer.data() + at);
            const std::string_view found(entry->d_name);
            at += entry->d_reclen;
            if (found == "." || found == "..") continue;
            names->emplace_back(found);
            const bool mayBeLink = entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN;
            if (links != nullptr && mayBeLink) links->emplace_back(found);
        }
    } while (count > 0);
    const ReadStatus status = count == 0 ? ReadStatus::Ok : statusOf(errno);
    if (live_ && !names->empty()) {  // nearly always they are what is asked for next
        near_ = name + '/';
        nearDirectory_ = std::move(directory);
        nearIsRoots_.reset();
    }
    return status;
}

ReadStatus RootedFs::readLink(std::string_view path, std::string* target) const {
    target->clear();
    std::array<char, 4096> text;
    ssize_t length = -1;
    if (live_) {
        const std::string name = relative(path);
        const Place place = placeOf(name);
        length = ::readlinkat(place.directory, place.path, text.data(), text.size());
    } else {
        const FileDescriptor link(openInside(relative(path), O_PATH | O_NOFOLLOW));
        if (!link.valid()) return statusOf(errno);
        length = ::readlinkat(link.get(), "", text.data(), text.size());
    }
    // A link's own descriptor answers ENOENT, a path answers EINVAL, when it is no link.
    if (length < 0) return errno == EINVAL ? ReadStatus::Unusable : statusOf(errno);
    target->assign(text.data(), static_cast<std::size_t>(length));
    return ReadStatus::Ok;
}

std::optional<FileFacts> RootedFs::facts(std::string_view path, bool followLinks) const {
    constexpr unsigned kWanted = STATX_BASIC_STATS | STATX_BTIME;
    const std::string name = relative(path);
    const int noFollow = followLinks ? 0 : O_NOFOLLOW;
    struct statx facts {};
    if (live_) {
        const int flags = AT_NO_AUTOMOUNT | (followLinks ? 0 : AT_SYMLINK_NOFOLLOW);
        const Place place = placeOf(name);
        if (::statx(place.directory, place.path, flags, kWanted, &facts) != 0) return std::nullopt;
        return factsOf(facts);
    }
    const FileDescriptor place(openInside(name, O_PATH | noFollow));
    if (!place.valid()) return std::nullopt;
    if (::statx(place.get(), "", AT_EMPTY_PATH, kWanted, &facts) != 0) return std::nullopt;
    return factsOf(facts);
}
