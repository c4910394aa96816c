// Group "Partition": one instance per block volume that can carry data, whatever it is made of.
#include <set>
#include <string>
#include <vector>

#include "scanners/zukhw/block_devices.h"
#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/device_path.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/udev_database.h"
#include "scanners/zukhw/volume_facts.h"

namespace {

constexpr std::uint64_t kSector = 512;
constexpr std::string_view kLvm = "LVM-";
constexpr std::string_view kCrypt = "CRYPT-";

struct Volume {
    std::string name;
    std::string path;  // its directory, free of links
    std::uint64_t sectors = 0;
    bool isPartition = false;
    std::string mappedName, mappedUuid;  // of mapped devices
};

// What a mapped device is, by the beginning of the name that its maker gave it.
const char* mappedKind(std::string_view uuid) {
    if (startsWith(uuid, kLvm)) return "Lvm";
    if (startsWith(uuid, kCrypt)) return "Crypt";
    if (startsWith(uuid, "mpath-")) return "Multipath";
    return startsWith(uuid, "part") ? "Partition" : "Dm";
}

// Memory used as a disk has no kind among these.
const char* kindOf(const Volume& volume) {
    const std::string_view name = volume.name;
    if (volume.isPartition) return "Partition";
    if (startsWith(name, "dm-")) return mappedKind(volume.mappedUuid);
    if (startsWith(name, "md")) return "Raid";
    if (startsWith(name, "loop")) return "Loop";
    if (startsWith(name, "zram")) return "Zram";
    if (startsWith(name, "sr")) return "Rom";
    return startsWith(name, "ram") ? "" : "Disk";
}

// "vg-my--volume" is the volume "my-volume" of the group "vg": a single hyphen stands between them, and a
// doubled one for one in a name. Layers that LVM hides below a volume add one more part.
void writeLogicalVolume(std::string_view mapped, GroupWriter& out) {
    std::vector<std::string> parts(1);
    for (std::size_t i = 0; i < mapped.size(); ++i) {
        const bool hyphen = mapped[i] == '-';
        if (hyphen && i + 1 < mapped.size() && mapped[i + 1] == '-')
            ++i;
        else if (hyphen && parts.size() == 1) {
            parts.emplace_back();
            continue;
        }
        parts.back() += mapped[i];
    }
    if (parts.size() != 2) return;
    out.text("VolumeGroup", parts[0]);
    out.text("LogicalVolume", parts[1]);
}

void writeLayers(Machine& machine, const Volume& volume, GroupWriter& out) {
    if (startsWith(volume.mappedUuid, kLvm)) writeLogicalVolume(volume.mappedName, out);
    if (startsWith(volume.name, "md") && !volume.isPartition) {
        out.text("RaidLevel", machine.text(volume.path + "/md/level"));
        out.number("RaidDevices", machine.number(volume.path + "/md/raid_disks"));
        out.text("RaidState", machine.text(volume.path + "/md/array_state"));
    }
    const bool encrypted = startsWith(volume.mappedUuid, kCrypt);
    out.boolean("Encrypted", encrypted);
    if (encrypted) {
        const std::string_view rest = std::string_view(volume.mappedUuid).substr(kCrypt.size());
        out.text("CipherKind", rest.substr(0, rest.find('-')));
    }
    if (startsWith(volume.name, "loop"))
        out.text("BackingFile", machine.text(volume.path + "/loop/backing_file"));
}

void writeVolume(Machine& machine, const Volume& volume, GroupWriter& out) {
    const VolumeFacts facts(machine, volume.name, volume.path);
    UdevDatabase& udev = machine.shared<UdevDatabase>();
    out.beginInstance();
    out.text("DeviceName", volume.name);
    out.text("Name", volume.mappedName);
    out.text("Kind", kindOf(volume));
    if (volume.sectors <= UINT64_MAX / kSector) out.number("SizeBytes", volume.sectors * kSector);
    if (const auto readOnly = machine.number(volume.path + "/ro")) out.boolean("ReadOnly", *readOnly != 0);
    out.text("FileSystem", facts.fileSystem);
    out.text("Label", facts.label);
    out.text("Uuid", facts.uuid);
    out.text("Usage", udev.property(facts.udevName, "ID_FS_USAGE"));
    out.text("Version", udev.property(facts.udevName, "ID_FS_VERSION"));
    out.list("Parents", blockParents(machine, volume.name));
    out.list("MountPoints", facts.mountPoints);
    out.boolean("Swap", facts.isSwap);
    writeLayers(machine, volume, out);
}

// A loop device without a file, or the path of a multipath device that is listed itself, carries nothing.
bool canCarryData(Machine& machine, const Volume& volume) {
    if (volume.sectors == 0 || machine.text(volume.path + "/hidden") == "1") return false;
    return volume.isPartition || !startsWith(volume.name, "loop") ||
           machine.exists(volume.path + "/loop/backing_file");
}

std::vector<Volume> readVolumes(Machine& machine) {
    std::vector<Volume> volumes;
    for (const std::string& name : blockNames(machine)) {
        Volume volume;
        volume.name = name;
        volume.path = blockPath(machine, name);
        if (volume.path.empty()) continue;
        volume.sectors = machine.number(volume.path + "/size").value_or(0);
        volume.isPartition = isPartition(machine, name);
        if (startsWith(name, "dm-")) {
            volume.mappedName = machine.text(volume.path + "/dm/name");
            volume.mappedUuid = machine.text(volume.path + "/dm/uuid");
        }
        if (canCarryData(machine, volume)) volumes.push_back(std::move(volume));
    }
    return volumes;
}

}  // namespace

void collectPartition(Machine& machine, GroupWriter& out) {
    const std::vector<Volume> volumes = readVolumes(machine);
    std::set<std::string_view> partitioned;
    for (const Volume& volume : volumes) {
        if (volume.isPartition) partitioned.insert(baseName(parentPath(volume.path)));
    }
    for (const Volume& volume : volumes) {
        if (partitioned.count(volume.name) == 0) writeVolume(machine, volume, out);
    }
}
