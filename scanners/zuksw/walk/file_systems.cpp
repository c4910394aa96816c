#include "scanners/zuksw/walk/file_systems.h"

#include <algorithm>

#include "scanners/shared/packages/text.h"

namespace zuksw {
namespace {

constexpr std::string_view kLocal[] = {
    "ext2", "ext3",     "ext4", "xfs",   "btrfs", "zfs",   "f2fs",
    "jfs",  "bcachefs", "vfat", "exfat", "ntfs3", "erofs",
};

// A search of autofs would mount what nobody asked for.
constexpr std::string_view kKernel[] = {
    "proc",        "sysfs",      "cgroup", "cgroup2",   "devtmpfs", "devpts",  "debugfs",   "tracefs",
    "securityfs",  "pstore",     "bpf",    "configfs",  "fusectl",  "mqueue",  "hugetlbfs", "efivarfs",
    "binfmt_misc", "rpc_pipefs", "nsfs",   "selinuxfs", "autofs",   "smackfs", "resctrl",   "binder",
};

}  // namespace

FileSystemChoice::FileSystemChoice(std::string_view text) {
    while (!text.empty()) {
        const std::size_t comma = text.find(',');
        const std::string_view type = trimBlanks(text.substr(0, comma));
        if (type == "all") all_ = true;
        if (type == "local") types_.insert(types_.end(), std::begin(kLocal), std::end(kLocal));
        types_.emplace_back(type);
        text.remove_prefix(comma == text.npos ? text.size() : comma + 1);
    }
}

bool isKernelType(std::string_view type) {
    return std::find(std::begin(kKernel), std::end(kKernel), type) != std::end(kKernel);
}

bool FileSystemChoice::accepts(std::string_view type) const {
    if (isKernelType(type)) return false;
    return all_ || std::find(types_.begin(), types_.end(), type) != types_.end();
}

}  // namespace zuksw
