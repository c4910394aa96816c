#include "scanners/zuksw/files/file_tree.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>

namespace zuksw {
namespace {

constexpr std::size_t kMaxPiece = PATH_MAX - 1;
constexpr int kMaxLinks = 40;

// One step by components, for kernels before 5.6.
FileDescriptor openBySteps(int directory, const std::string& path, int flags) {
    FileDescriptor current;
    int at = directory;
    for (std::size_t begin = 0; begin < path.size();) {
        const std::size_t slash = path.find('/', begin);
        const bool last = slash == path.npos;
        const std::string name = path.substr(begin, last ? path.npos : slash - begin);
        const int stepFlags = last ? flags : O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
        FileDescriptor next(::openat(at, name.c_str(), stepFlags));
        if (!next.valid()) return next;
        current = std::move(next);
        at = current.get();
        if (last) break;
        begin = slash + 1;
    }
    return current;
}

FileDescriptor openByKernel(int directory, const char* path, int flags) {
    struct open_how how = {};
    how.flags = static_cast<unsigned>(flags);
    how.resolve = RESOLVE_NO_SYMLINKS | RESOLVE_BENEATH;
    return FileDescriptor(static_cast<int>(::syscall(SYS_openat2, directory, path, &how, sizeof how)));
}

}  // namespace

FileTree::FileTree(FileDescriptor root, std::string realPrefix)
    : root_(std::move(root)),
      realPrefix_(std::move(realPrefix)),
      kernelResolves_(openByKernel(root_.get(), ".", O_PATH | O_CLOEXEC).valid()) {}

FileDescriptor FileTree::openPiece(int directory, const std::string& path, int flags) const {
    return kernelResolves_ ? openByKernel(directory, path.c_str(), flags)
                           : openBySteps(directory, path, flags);
}

std::optional<FileTree> FileTree::open(const std::string& prefix) {
    const std::string path = prefix.empty() ? "/" : prefix;
    FileDescriptor root(::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!root.valid()) return std::nullopt;
    struct FreeText {
        void operator()(char* text) const { std::free(text); }  // NOLINT: realpath uses malloc
    };
    const std::unique_ptr<char, FreeText> real(::realpath(path.c_str(), nullptr));
    if (!real) return std::nullopt;
    std::string realPrefix = real.get();
    if (realPrefix == "/") realPrefix.clear();
    return FileTree(std::move(root), std::move(realPrefix));
}

FileDescriptor FileTree::openAt(std::string_view path, int flags) const {
    path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
    if (path.empty()) path = ".";
    FileDescriptor directory;
    int at = root_.get();
    while (path.size() > kMaxPiece) {
        const std::size_t slash = path.rfind('/', kMaxPiece);
        if (slash == path.npos) {
            errno = ENAMETOOLONG;
            return {};
        }
        FileDescriptor next =
            openPiece(at, std::string(path.substr(0, slash)), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (!next.valid()) return next;
        directory = std::move(next);
        at = directory.get();
        path.remove_prefix(slash + 1);
    }
    return openPiece(at, std::string(path), flags | O_NOFOLLOW | O_CLOEXEC);
}

FileDescriptor FileTree::openRegular(std::string_view path) const {
    const std::optional<struct stat> before = stat(path);
    if (!before) return {};
    if (!S_ISREG(before->st_mode)) {
        errno = EINVAL;
        return {};
    }
    constexpr int kFlags = O_RDONLY | O_NONBLOCK | O_NOCTTY;
    FileDescriptor fd = openAt(path, kFlags | O_NOATIME);
    if (!fd.valid() && errno == EPERM) fd = openAt(path, kFlags);
    if (!fd.valid()) return fd;
    struct stat after = {};
    if (::fstat(fd.get(), &after) != 0) return {};
    if (after.st_dev != before->st_dev || after.st_ino != before->st_ino) {
        errno = ESTALE;
        return {};
    }
    return fd;
}

std::optional<struct stat> FileTree::stat(std::string_view path) const {
    const FileDescriptor fd = openAt(path, O_PATH);
    struct stat facts = {};
    if (!fd.valid() || ::fstat(fd.get(), &facts) != 0) return std::nullopt;
    return facts;
}

std::optional<std::string> FileTree::readLink(std::string_view path) const {
    const FileDescriptor fd = openAt(path, O_PATH);
    if (!fd.valid()) return std::nullopt;
    std::array<char, PATH_MAX> target = {};
    const ssize_t length = ::readlinkat(fd.get(), "", target.data(), target.size());
    if (length < 0) return std::nullopt;
    return std::string(target.data(), static_cast<std::size_t>(length));
}

std::optional<std::string> FileTree::resolve(
    std::string_view path, const std::function<bool(std::string_view directory)>& mayPass) const {
    std::string done;  // resolved so far, "/a/b"
    std::string rest(path);
    for (int links = 0; !rest.empty();) {
        const std::size_t begin = rest.find_first_not_of('/');
        if (begin == rest.npos) break;
        const std::size_t end = rest.find('/', begin);
        const std::string name = rest.substr(begin, end == rest.npos ? end : end - begin);
        rest = end == rest.npos ? std::string() : rest.substr(end);
        if (name == ".") continue;
        if (name == "..") {
            done.resize(done.empty() ? 0 : done.rfind('/'));
            continue;
        }
        const std::string next = done + "/" + name;
        const std::optional<struct stat> facts = stat(next);
        if (!facts) return std::nullopt;
        if (!S_ISLNK(facts->st_mode)) {
            if (!rest.empty() && mayPass && !mayPass(next)) {
                errno = ENOENT;
                return std::nullopt;
            }
            done = next;
            continue;
        }
        const std::optional<std::string> target = readLink(next);
        if (!target) return std::nullopt;
        if (++links > kMaxLinks) {
            errno = ELOOP;
            return std::nullopt;
        }
        rest = *target + rest;
        if ((*target)[0] == '/') done.clear();
    }
    return done.empty() ? "/" : done;
}

}  // namespace zuksw
