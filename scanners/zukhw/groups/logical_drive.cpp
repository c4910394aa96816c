// Group "LogicalDrive": one instance per mounted file system that stores data.
#include <sys/statvfs.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "scanners/zukhw/block_devices.h"
#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/file_system_kinds.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/mountinfo.h"
#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/udev_database.h"

namespace {

// How full a file system is; no value where asking for it might hang, and of a copied machine.
std::optional<struct statvfs> usage(Machine& machine, const Mount& mount) {
    if (!machine.live() || canHang(mount.type)) return std::nullopt;
    struct statvfs usage {};
    if (::statvfs(mount.point.c_str(), &usage) != 0) return std::nullopt;
    return usage;
}

bool isUsed(const struct statvfs& usage) {
    return usage.f_blocks > usage.f_bfree;
}

std::vector<std::string> optionsOf(const Mount& mount) {
    std::set<std::string> options;
    for (const std::string* text : {&mount.options, &mount.superOptions}) {
        for (const std::string_view option : split(*text, ',')) options.emplace(option);
    }
    if (options.count("ro") != 0) options.erase("rw");  // of the mount, or of what is mounted: one is enough
    return {options.begin(), options.end()};
}

// Whether one of the options is `name`, with or without a value.
bool hasOption(std::string_view options, std::string_view name) {
    for (const std::string_view option : split(options, ',')) {
        if (option.substr(0, option.find('=')) == name) return true;
    }
    return false;
}

// A file system in memory counts when it was given a size or has something in it.
bool isListed(Machine& machine, const Mount& mount) {
    if (mount.type == "overlay") return mount.point == "/";
    if (machine.shared<FileSystemKinds>().isPseudo(mount.type)) return false;
    if (mount.type != "tmpfs" || hasOption(mount.superOptions, "size")) return true;
    const auto used = usage(machine, mount);
    return used && isUsed(*used);
}

// Of what covers one another the last mount, which alone can be seen, in the order of the table.
std::vector<const Mount*> visibleMounts(const std::vector<Mount>& mounts) {
    std::set<std::string_view> covered;
    std::vector<const Mount*> visible;
    std::for_each(mounts.rbegin(), mounts.rend(), [&](const Mount& mount) {
        if (covered.insert(mount.point).second) visible.push_back(&mount);
    });
    std::reverse(visible.begin(), visible.end());
    return visible;
}

// The mounts to report, by mount point: of what is mounted again elsewhere the first.
std::vector<const Mount*> listedMounts(Machine& machine) {
    std::set<std::pair<std::string, std::string>> seen;
    std::vector<const Mount*> listed;
    for (const Mount* mount : visibleMounts(machine.shared<Mountinfo>().mounts())) {
        if (isListed(machine, *mount) && seen.emplace(mount->device, mount->root).second)
            listed.push_back(mount);
    }
    std::sort(listed.begin(), listed.end(),
              [](const Mount* a, const Mount* b) { return a->point < b->point; });
    return listed;
}

// File systems over several devices, as btrfs, have a number that is no block device's.
std::string blockOf(Machine& machine, const Mount& mount) {
    const std::string name = blockNameOf(machine, mount.device);
    return name.empty() ? blockNameOfNode(machine, mount.source) : name;
}

const char* kindOf(Machine& machine, const Mount& mount, const std::vector<std::string>& disks) {
    if (mount.type == "tmpfs") return "Ram";
    if (isNetworkFileSystem(mount.type)) return "Network";
    for (const std::string& disk : disks) {
        if (startsWith(disk, "sr")) return "Optical";
        if (machine.text("sys/block/" + disk + "/removable") == "1") return "Removable";
    }
    return "Local";
}

// "server:/path", "[fe80::1]:/path", "//server/share", and of Gluster "server:volume".
void writeServer(const Mount& mount, GroupWriter& out) {
    const std::string_view source(mount.source);
    if (startsWith(source, "//")) {
        const std::string_view rest = source.substr(2);
        const std::size_t slash = rest.find('/');
        out.text("Server", rest.substr(0, slash));
        if (slash != std::string_view::npos) out.text("Share", rest.substr(slash + 1));
        return;
    }
    const bool isGluster = endsWith(mount.type, "glusterfs");
    const std::size_t colon = isGluster ? source.rfind(':') : source.find(":/");
    if (colon == std::string_view::npos) return;
    std::string_view server = source.substr(0, colon);
    if (startsWith(server, "[") && endsWith(server, "]")) server = server.substr(1, server.size() - 2);
    out.text("Server", server);
    out.text("Share", source.substr(colon + 1));
}

void writeUsage(Machine& machine, const Mount& mount, GroupWriter& out) {
    const auto found = usage(machine, mount);
    if (!found) return;
    const std::uint64_t unit = found->f_frsize;
    out.number("SizeBytes", found->f_blocks * unit);
    if (found->f_blocks >= found->f_bfree) out.number("UsedBytes", (found->f_blocks - found->f_bfree) * unit);
    out.number("FreeBytes", found->f_bfree * unit);
    out.number("AvailableBytes", found->f_bavail * unit);
    if (found->f_files == 0) return;  // file systems that make inodes as they are needed
    out.number("Inodes", found->f_files);
    out.number("InodesFree", found->f_ffree);
}

// All disks below; btrfs tells the devices besides the one that was mounted.
std::vector<std::string> disksOf(Machine& machine, const Mount& mount, const std::string& block,
                                 std::string_view uuid) {
    std::set<std::string> disks;
    std::vector<std::string> devices;
    if (mount.type == "btrfs" && !uuid.empty()) {
        devices = machine.list("sys/fs/btrfs/" + std::string(uuid) + "/devices");
    }
    if (!block.empty()) devices.push_back(block);
    for (const std::string& device : devices) {
        for (const std::string& disk : disksBelow(machine, device)) disks.insert(disk);
    }
    std::vector<std::string> sorted(disks.begin(), disks.end());
    naturalSort(&sorted);
    return sorted;
}

std::string deviceOf(const Mount& mount, const std::string& block) {
    // What the kernel calls the device that it was started from before it has read any name of it.
    return mount.source == "/dev/root" && !block.empty() ? "/dev/" + block : mount.source;
}

// The udev database's name of the block device.
std::string udevNameOf(Machine& machine, const Mount& mount, const std::string& block) {
    if (!startsWith(mount.device, "0:")) return 'b' + mount.device;
    const std::string path = blockPath(machine, block);
    return path.empty() ? "" : 'b' + machine.text(path + "/dev");
}

void writeMount(Machine& machine, const Mount& mount, GroupWriter& out) {
    UdevDatabase& udev = machine.shared<UdevDatabase>();
    const std::string block = isNetworkFileSystem(mount.type) ? "" : blockOf(machine, mount);
    const std::string udevName = block.empty() ? "" : udevNameOf(machine, mount, block);
    const std::string_view uuid = udev.property(udevName, "ID_FS_UUID");
    const std::vector<std::string> disks = disksOf(machine, mount, block, uuid);
    out.beginInstance();
    out.text("MountPoint", mount.point);
    out.text("Device", deviceOf(mount, block));
    out.text("FileSystem", mount.type);
    out.text("Label", decodeUdevEscapes(udev.property(udevName, "ID_FS_LABEL_ENC")));
    out.text("Uuid", uuid);
    out.text("Kind", kindOf(machine, mount, disks));
    if (isNetworkFileSystem(mount.type)) writeServer(mount, out);
    out.boolean("ReadOnly", hasOption(mount.options, "ro") || hasOption(mount.superOptions, "ro"));
    out.list("Options", optionsOf(mount));
    out.boolean("System", mount.point == "/");
    writeUsage(machine, mount, out);
    out.list("Disks", disks);
    if (!block.empty()) out.boolean("Encrypted", isEncrypted(machine, block));
    if (mount.root != "/") out.text("Subvolume", mount.root);
}

}  // namespace

void collectLogicalDrive(Machine& machine, GroupWriter& out) {
    for (const Mount* mount : listedMounts(machine)) writeMount(machine, *mount, out);
}
