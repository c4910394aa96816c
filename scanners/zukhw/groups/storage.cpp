// Group "Storage": one instance per whole disk or drive.
#include <algorithm>
#include <string>
#include <vector>

#include "scanners/zukhw/block_interface.h"
#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/device_names.h"
#include "scanners/zukhw/device_path.h"
#include "scanners/zukhw/disk_makers.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/udev_database.h"
#include "scanners/zukhw/vpd.h"

namespace {

constexpr char kBlock[] = "sys/block/";
constexpr char kTape[] = "sys/class/scsi_tape/";
constexpr std::uint64_t kSector = 512;

enum class Kind { Disk, Optical, Tape, Floppy };

// One disk with what several of its fields depend on.
struct Disk {
    std::string name;
    std::string path;    // its directory, free of links
    std::string device;  // that of the device below it, free of links, or empty
    Kind kind = Kind::Disk;
    std::string interface;
    std::string vendor, model;
    std::optional<AtaIdentity> ata;
};

const char* nameOf(Kind kind) {
    static constexpr const char* kNames[] = {"Disk", "Optical", "Tape", "Floppy"};
    return kNames[static_cast<int>(kind)];
}

// Memory, files and compositions of other disks show up as disks too.
bool isComposed(const std::string& name) {
    static constexpr std::string_view kPrefixes[] = {"loop", "ram", "zram", "dm-", "md", "nbd"};
    return std::any_of(std::begin(kPrefixes), std::end(kPrefixes),
                       [&](std::string_view prefix) { return startsWith(name, prefix); });
}

// The hidden ones are the paths of a multipath device that is listed itself.
bool isListed(Machine& machine, const std::string& path) {
    if (machine.text(path + "/hidden") == "1") return false;
    return machine.number(path + "/size") != 0U || machine.text(path + "/removable") == "1";
}

Kind kindOf(Machine& machine, const Disk& disk) {
    constexpr char kScsiOptical[] = "5";
    if (startsWith(disk.name, "fd")) return Kind::Floppy;
    if (startsWith(disk.name, "sr")) return Kind::Optical;
    return machine.text(disk.path + "/device/type") == kScsiOptical ? Kind::Optical : Kind::Disk;
}

std::string vendorOf(Machine& machine, const Disk& disk) {
    if (disk.interface == "MMC" || disk.interface == "SD") {
        return cardMaker(machine.text(disk.path + "/device/manfid"), disk.interface == "SD");
    }
    std::string vendor = machine.text(disk.path + "/device/vendor");
    if (vendor == "ATA") return "";  // the name of the translation, not of a maker
    if (!startsWith(vendor, "0x")) return vendor;
    const std::string controller = pciAncestor(disk.path);
    if (controller.empty()) return "";
    return machine.shared<DeviceNames>().pciVendor(readDeviceId(machine, controller + "/vendor"));
}

std::string modelOf(Machine& machine, const Disk& disk) {
    const std::string model = machine.text(disk.path + "/device/model");
    const bool isCard = disk.interface == "MMC" || disk.interface == "SD";
    return isCard && model.empty() ? machine.text(disk.path + "/device/name") : model;
}

// Disks of SCSI's command set can have this page, behind whichever adapter. Parallel ATA disks run under the
// same driver as serial ones.
void readAtaIdentity(Machine& machine, Disk* disk) {
    static constexpr std::string_view kOthers[] = {"NVMe", "Virtio", "Xen", "MMC", "SD", "DASD"};
    if (std::find(std::begin(kOthers), std::end(kOthers), disk->interface) != std::end(kOthers)) return;
    const auto page = machine.read(disk->path + "/device/vpd_pg89");
    disk->ata = page ? vpdAtaIdentity(*page) : std::nullopt;
    if (disk->ata && !disk->ata->serialAta && disk->interface == "SATA") disk->interface = "IDE";
}

Disk readDisk(Machine& machine, const std::string& name, const std::string& directory) {
    Disk disk;
    disk.name = name;
    disk.path = machine.resolve(directory + name);
    machine.files().stayIn(disk.path);
    disk.device = machine.resolve(disk.path + "/device");
    disk.interface = blockInterface(machine, disk.path);
    disk.kind = directory == kTape ? Kind::Tape : kindOf(machine, disk);
    disk.vendor = vendorOf(machine, disk);
    disk.model = modelOf(machine, disk);
    readAtaIdentity(machine, &disk);
    return disk;
}

std::string serialNumber(Machine& machine, const Disk& disk, const std::string& udevName) {
    for (const char* file : {"/serial", "/device/serial"}) {
        std::string serial = machine.text(disk.path + file);
        if (!serial.empty()) return serial;
    }
    const std::string page = machine.read(disk.path + "/device/vpd_pg80").value_or("");
    std::string serial(trim(vpdSerial(page)));
    if (!serial.empty()) return serial;
    if (disk.ata && !trim(disk.ata->serial).empty()) return disk.ata->serial;
    return std::string(machine.shared<UdevDatabase>().property(udevName, "ID_SERIAL_SHORT"));
}

std::string worldWideName(Machine& machine, const Disk& disk) {
    for (const char* file : {"/wwid", "/device/wwid"}) {
        std::string name = machine.text(disk.path + file);
        if (!name.empty()) return name;
    }
    return vpdName(machine.read(disk.path + "/device/vpd_pg83").value_or(""));
}

std::string firmwareRevision(Machine& machine, const Disk& disk) {
    if (disk.ata && !trim(disk.ata->revision).empty()) return disk.ata->revision;
    for (const char* file : {"/device/rev", "/device/firmware_rev", "/device/fwrev"}) {
        std::string revision = machine.text(disk.path + file);
        if (!revision.empty()) return revision;
    }
    return "";
}

std::optional<unsigned> rotation(Machine& machine, const Disk& disk) {
    const std::uint16_t code = vpdRotation(machine.read(disk.path + "/device/vpd_pgb1").value_or(""));
    return rotationRpm(code == 0 && disk.ata ? disk.ata->rotation : code);
}

std::string mediaType(Machine& machine, const Disk& disk, bool turns) {
    if (disk.kind == Kind::Optical) return "Optical";
    if (disk.kind != Kind::Disk) return "";
    if (disk.interface == "MMC" || disk.interface == "SD") return "Flash";
    const bool isVirtual =
        disk.interface == "Virtio" || disk.interface == "Xen" || disk.interface == "HyperV";
    if (isVirtual || isVirtualDisk(disk.vendor, disk.model)) return "";
    const std::string rotational = machine.text(disk.path + "/queue/rotational");
    if (rotational == "0") return "SSD";
    // What bridges to USB do not tell the kernel takes for a turning disk.
    if (rotational != "1" || (disk.interface == "USB" && !turns)) return "";
    return "HDD";
}

std::string busAddress(Machine& machine, const Disk& disk) {
    if (disk.interface == "NVMe") return machine.text(disk.path + "/device/cntlid");
    const std::string_view name = baseName(disk.device);
    const bool isScsi = std::count(name.begin(), name.end(), ':') == 3;
    const bool isCard = disk.interface == "MMC" || disk.interface == "SD";
    return isScsi || isCard ? std::string(name) : "";
}

bool isMultipath(Machine& machine, const Disk& disk) {
    const std::vector<std::string> holders = machine.list(disk.path + "/holders");
    return std::any_of(holders.begin(), holders.end(), [&](const std::string& holder) {
        return startsWith(machine.text(kBlock + holder + "/dm/uuid"), "mpath-");
    });
}

std::size_t partitionCount(Machine& machine, const Disk& disk) {
    const std::vector<std::string> names = machine.listUnordered(disk.path);
    return static_cast<std::size_t>(std::count_if(names.begin(), names.end(), [&](const std::string& name) {
        return startsWith(name, disk.name) && machine.exists(disk.path + '/' + name + "/partition");
    }));
}

std::optional<bool> flag(Machine& machine, const std::string& path) {
    const std::string text = machine.text(path);
    return text == "0" || text == "1" ? std::optional(text == "1") : std::nullopt;
}

void writeIdentity(Machine& machine, const Disk& disk, const std::string& udevName, GroupWriter& out) {
    out.text("DeviceName", disk.name);
    out.text("Kind", nameOf(disk.kind));
    out.hardware("Vendor", disk.vendor);
    out.hardware("Model", disk.model);
    out.hardware("SerialNumber", serialNumber(machine, disk, udevName));
    out.hardware("Wwn", worldWideName(machine, disk));
    out.hardware("FirmwareRevision", firmwareRevision(machine, disk));
}

void writeMedium(Machine& machine, const Disk& disk, GroupWriter& out) {
    const auto sectors = machine.number(disk.path + "/size");
    // A drive without a medium has no size.
    if (sectors && *sectors != 0 && *sectors <= UINT64_MAX / kSector)
        out.number("SizeBytes", *sectors * kSector);
    out.number("LogicalBlockBytes", machine.number(disk.path + "/queue/logical_block_size"));
    out.number("PhysicalBlockBytes", machine.number(disk.path + "/queue/physical_block_size"));
    const std::optional<unsigned> rpm = rotation(machine, disk);
    out.text("MediaType", mediaType(machine, disk, rpm.has_value()));
    out.number("RotationRpm", rpm);
}

void writeAttachment(Machine& machine, const Disk& disk, GroupWriter& out) {
    out.text("Interface", disk.interface);
    out.text("BusAddress", busAddress(machine, disk));
    out.text("ControllerAddress", baseName(pciAncestor(disk.path)));
    out.text("Driver", nearestDriver(machine, disk.device));
    out.boolean("Removable", flag(machine, disk.path + "/removable"));
    out.boolean("ReadOnly", flag(machine, disk.path + "/ro"));
    out.text("State", machine.text(disk.path + "/device/state"));
}

void writePartitions(Machine& machine, const Disk& disk, const std::string& udevName, GroupWriter& out) {
    if (disk.kind != Kind::Disk) return;
    UdevDatabase& udev = machine.shared<UdevDatabase>();
    out.boolean("Multipath", isMultipath(machine, disk));
    out.text("PartitionTable", udev.property(udevName, "ID_PART_TABLE_TYPE"));
    out.text("PartitionTableId", udev.property(udevName, "ID_PART_TABLE_UUID"));
    out.number("PartitionCount", partitionCount(machine, disk));
}

void writeDisk(Machine& machine, const Disk& disk, GroupWriter& out) {
    machine.files().stayIn(disk.path);
    const std::string number = machine.text(disk.path + "/dev");
    const std::string udevName = (disk.kind == Kind::Tape ? 'c' : 'b') + number;
    out.beginInstance();
    writeIdentity(machine, disk, udevName, out);
    writeMedium(machine, disk, out);
    writeAttachment(machine, disk, out);
    writePartitions(machine, disk, udevName, out);
    if (disk.interface != "NVMe") return;
    out.text("NvmeSubsystem", machine.text(disk.path + "/device/subsysnqn"));
    out.number("NamespaceId", machine.number(disk.path + "/nsid"));
}

// A tape drive has many names: st0 is the one that is its own, nst0, st0a, st0l and st0m are modes of it.
bool isTapeDrive(const std::string& name) {
    return startsWith(name, "st") && name.size() > 2 &&
           name.find_first_not_of("0123456789", 2) == std::string::npos;
}

}  // namespace

void collectStorage(Machine& machine, GroupWriter& out) {
    std::vector<std::string> names;
    for (const std::string& name : machine.list("sys/block")) {
        if (!isComposed(name) && isListed(machine, kBlock + name)) names.push_back(name);
    }
    for (const std::string& name : machine.list("sys/class/scsi_tape")) {
        if (isTapeDrive(name)) names.push_back(name);
    }
    naturalSort(&names);
    for (const std::string& name : names) {
        const Disk disk = readDisk(machine, name, isTapeDrive(name) ? kTape : kBlock);
        if (!disk.path.empty()) writeDisk(machine, disk, out);
    }
}
