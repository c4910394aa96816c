// Group "DiskPartition": one instance per entry of a partition table.
#include <string>
#include <vector>

#include "scanners/zukhw/block_devices.h"
#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/device_path.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/partition_types.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/udev_database.h"
#include "scanners/zukhw/volume_facts.h"

namespace {

// Two digits for the types of a master boot record, "0x83"; GUIDs as they are.
std::string typeOf(std::string_view written) {
    const auto number = startsWith(written, "0x") ? parseHex(written) : std::nullopt;
    if (!number) return toLower(written);
    const std::string digits = toLower(written.substr(2));
    return digits.size() < 2 ? '0' + digits : digits;
}

// Marked as what a BIOS is to start. Flags that are all off are not told at all.
std::optional<bool> isBootable(std::string_view scheme, std::string_view flags) {
    constexpr std::uint64_t kActive = 0x80;
    constexpr std::uint64_t kLegacyBoot = 0x04;
    if (scheme != "dos" && scheme != "gpt") return std::nullopt;
    const std::uint64_t bit = scheme == "dos" ? kActive : kLegacyBoot;
    return (parseHex(flags).value_or(0) & bit) != 0;
}

void writeEntry(Machine& machine, const std::string& path, const std::string& udevName, GroupWriter& out) {
    UdevDatabase& udev = machine.shared<UdevDatabase>();
    const std::string uevent = machine.text(path + "/uevent");
    const std::string_view scheme = udev.property(udevName, "ID_PART_ENTRY_SCHEME");
    const std::string type = typeOf(udev.property(udevName, "ID_PART_ENTRY_TYPE"));
    std::string uuid(findValue(uevent, "PARTUUID", '=').value_or(""));
    std::string label(findValue(uevent, "PARTNAME", '=').value_or(""));
    if (uuid.empty()) uuid = udev.property(udevName, "ID_PART_ENTRY_UUID");
    if (label.empty()) label = decodeUdevEscapes(udev.property(udevName, "ID_PART_ENTRY_NAME"));
    out.text("Scheme", scheme);
    out.text("TypeId", type);
    out.text("TypeName", partitionTypeName(type));
    out.text("PartitionUuid", toLower(uuid));
    out.text("PartitionLabel", label);
    out.boolean("Bootable", isBootable(scheme, udev.property(udevName, "ID_PART_ENTRY_FLAGS")));
}

void writeSectors(Machine& machine, const char* field, const std::string& path, GroupWriter& out) {
    constexpr std::uint64_t kSector = 512;
    const auto sectors = machine.number(path);
    if (sectors && *sectors <= UINT64_MAX / kSector) out.number(field, *sectors * kSector);
}

void writePartition(Machine& machine, const std::string& name, const std::string& path, std::uint64_t number,
                    GroupWriter& out) {
    const VolumeFacts volume(machine, name, path);
    out.beginInstance();
    out.text("DeviceName", name);
    out.text("Disk", baseName(parentPath(path)));
    out.number("Number", number);
    writeSectors(machine, "StartBytes", path + "/start", out);
    writeSectors(machine, "SizeBytes", path + "/size", out);
    if (const auto readOnly = machine.number(path + "/ro")) out.boolean("ReadOnly", *readOnly != 0);
    writeEntry(machine, path, volume.udevName, out);
    out.text("FileSystem", volume.fileSystem);
    out.text("Label", volume.label);
    out.text("Uuid", volume.uuid);
    if (volume.isSwap) {
        out.text("MountPoint", "[SWAP]");
    } else if (!volume.mountPoints.empty()) {
        out.text("MountPoint", volume.mountPoints.front());
    }
}

}  // namespace

void collectDiskPartition(Machine& machine, GroupWriter& out) {
    for (const std::string& name : blockNames(machine)) {
        if (!isPartition(machine, name)) continue;
        const std::string path = blockPath(machine, name);
        const auto number = machine.number(path + "/partition");
        if (number) writePartition(machine, name, path, *number, out);
    }
}
