#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_descriptor.h"

enum class ReadStatus {
    Ok,
    Missing,   // no such file
    Denied,    // it is there, and this user may not read it
    Unusable,  // not a regular file, larger than the limit, or the kernel answers with an error
};

struct FileFacts {
    enum class Type { Regular, Directory, Link, Other };
    Type type = Type::Other;
    std::uint64_t size = 0;
    unsigned mode = 0;  // permission bits
    unsigned userId = 0;
    std::int64_t modified = 0;  // seconds since 1970
    std::int64_t changed = 0;
    std::optional<std::int64_t> born;  // where the file system keeps it
};

// The files of one machine, below a root directory: "/" for the machine that we run on, or a copy of another
// one's files. Paths are relative to the root ("proc/meminfo"). A symbolic link, absolute or with "..", is
// followed inside the root and never leads out of it. Device nodes, sockets and pipes are never opened.
// Objects can be moved, not copied; one thread at a time.
class RootedFs {
  public:
    enum class Resolver { Kernel, Own };  // Own: follow links ourselves, for kernels before 5.6

    // The files of the running machine.
    static RootedFs ofLiveMachine();
    // The files below `root`; no value when that is not a directory that can be opened.
    static std::optional<RootedFs> below(const std::string& root, Resolver resolver = Resolver::Kernel);

    bool live() const { return live_; }

    // Reads the whole file into *data, at most `limit` bytes: a longer one is Unusable. *data is empty unless
    // the status is Ok.
    ReadStatus read(std::string_view path, std::string* data, std::size_t limit) const;

    // The first `size` bytes of a file, or all of a shorter one.
    ReadStatus readHead(std::string_view path, std::string* data, std::size_t size) const;

    // The entries of a directory except "." and "..", in no order; in *links those that are symbolic links,
    // or may be.
    ReadStatus list(std::string_view path, std::vector<std::string>* names,
                    std::vector<std::string>* links = nullptr) const;

    // The text of a symbolic link, as it stands.
    ReadStatus readLink(std::string_view path, std::string* target) const;

    // Facts of the file that the path leads to (the link itself when followLinks is false).
    std::optional<FileFacts> facts(std::string_view path, bool followLinks = true) const;

    // Makes calls for what is below this directory cheaper until another one is named or listed. It has no
    // other effect: paths stay relative to the root.
    void stayIn(std::string_view directory) const;

    bool exists(std::string_view path) const { return facts(path).has_value(); }

    // The path with every link and ".." resolved inside the root; no value when it leads nowhere or in a
    // circle.
    std::optional<std::string> resolve(std::string_view path) const;

    // A descriptor for reading a regular file; invalid with errno set when there is none to be had.
    FileDescriptor openRegular(std::string_view path) const;

  private:
    RootedFs(FileDescriptor root, bool live, Resolver resolver)
        : root_(std::move(root)), live_(live), resolver_(resolver) {}

    // From where the system looks a path up, and the rest of the path.
    struct Place {
        int directory;
        const char* path;
    };
    Place placeOf(const std::string& path) const;
    FileDescriptor openNear(const std::string& path) const;
    int openInside(const std::string& path, int flags) const;
    int openResolved(const std::string& path, int flags) const;

    FileDescriptor root_;
    bool live_;
    mutable std::string near_;  // the directory that we stay in, with a slash at its end
    mutable FileDescriptor nearDirectory_;
    mutable std::optional<bool> nearIsRoots_;  // nobody but root can put anything into it; asked when needed
    // Places of the running machine known to be no links, or by way of which links of the kernel's lead,
    // which are none: nearly all paths share their first parts. Nothing has to be kept inside there; below
    // another root a place could become a link that leads out.
    mutable std::set<std::string> plainPlaces_;
    mutable Resolver resolver_;  // falls to Own when the kernel turns out not to know how
};
