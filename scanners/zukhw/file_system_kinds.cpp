#include "scanners/zukhw/file_system_kinds.h"

#include <algorithm>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

namespace {

template <std::size_t N>
bool contains(const std::string_view (&types)[N], std::string_view type) {
    return std::find(std::begin(types), std::end(types), type) != std::end(types);
}

constexpr std::string_view kNetwork[] = {"nfs", "nfs4",           "cifs",      "smb3",    "ceph",
                                         "9p",  "fuse.glusterfs", "glusterfs", "virtiofs"};
// They have no block device of their own and hold data all the same.
constexpr std::string_view kStoring[] = {"zfs", "tmpfs"};

// For copies without /proc/filesystems, and for types of modules that are gone from it.
constexpr std::string_view kKnownPseudo[] = {
    "autofs",     "bdev",    "binder",  "binfmt_misc", "bpf",        "cgroup",    "cgroup2",     "configfs",
    "cpuset",     "debugfs", "devpts",  "devtmpfs",    "drm",        "ecryptfs",  "efivarfs",    "fusectl",
    "hugetlbfs",  "mqueue",  "nfsd",    "nsfs",        "overlay",    "pipefs",    "proc",        "pstore",
    "ramfs",      "resctrl", "rootfs",  "rpc_pipefs",  "securityfs", "selinuxfs", "smackfs",     "sockfs",
    "squashfuse", "sysfs",   "tracefs", "usbfs",       "fuse",       "aufs",      "mtd_inodefs", "xenfs",
};

}  // namespace

FileSystemKinds::FileSystemKinds(Machine& machine) : withoutDevice_("\n") {
    const std::string list = machine.text("proc/filesystems");
    for (const std::string_view line : lines(list)) {
        const std::vector<std::string_view> parts = words(line);
        if (parts.size() == 2 && parts[0] == "nodev") withoutDevice_ += std::string(parts[1]) + '\n';
    }
}

bool FileSystemKinds::isPseudo(std::string_view type) const {
    if (contains(kStoring, type) || isNetworkFileSystem(type)) return false;
    type = type.substr(0, type.find('.'));  // "fuse.sshfs" is registered as "fuse"
    if (contains(kKnownPseudo, type)) return true;
    return withoutDevice_.find('\n' + std::string(type) + '\n') != std::string::npos;
}

bool isNetworkFileSystem(std::string_view type) {
    return contains(kNetwork, type);
}

bool canHang(std::string_view type) {
    return isNetworkFileSystem(type) || startsWith(type, "fuse") || type == "autofs";
}
