#pragma once

#include <sys/stat.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/file_descriptor.h"

namespace zuksw {

/** The files of the machine that is scanned: all of them, or those below a prefix. Paths begin with '/' and
 * are taken below the prefix; symbolic links lead nowhere unless a function says otherwise, and never out of
 * the prefix. A path may be longer than PATH_MAX. Any thread may use it. Every function that gives no value
 * leaves the reason in errno. */
class FileTree {
  public:
    /** prefix: an absolute path, or empty for the whole machine. Nothing when it is no directory. */
    static std::optional<FileTree> open(const std::string& prefix);

    /** Opens what stands at the path itself; a symbolic link anywhere in it is ELOOP. flags as for open(2),
     *  O_NOFOLLOW and O_CLOEXEC added. */
    FileDescriptor openAt(std::string_view path, int flags) const;
    /** A regular file for reading, without touching its access time where that is allowed. */
    FileDescriptor openRegular(std::string_view path) const;
    /** What stands at the path itself. */
    std::optional<struct stat> stat(std::string_view path) const;
    std::optional<std::string> readLink(std::string_view path) const;
    /** Where the path leads when every link is followed inside the prefix. What lies behind a directory that
     *  mayPass refuses is not there (ENOENT), and is not looked at. */
    std::optional<std::string> resolve(
        std::string_view path,
        const std::function<bool(std::string_view directory)>& mayPass = nullptr) const;

    /** Where the prefix really lies, without a '/' at the end: empty for the whole machine. */
    const std::string& realPrefix() const { return realPrefix_; }
    bool isWholeMachine() const { return realPrefix_.empty(); }

  private:
    FileTree(FileDescriptor root, std::string realPrefix);
    FileDescriptor openPiece(int directory, const std::string& path, int flags) const;

    FileDescriptor root_;
    std::string realPrefix_;
    bool kernelResolves_;  // openat2 is there
};

}  // namespace zuksw
