#include "scanners/zukhw/block_interface.h"

#include <string_view>

#include "scanners/zukhw/device_path.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

namespace {

bool isNumbered(std::string_view name, std::string_view prefix) {
    if (!startsWith(name, prefix) || name.size() == prefix.size()) return false;
    return name.find_first_not_of("0123456789", prefix.size()) == std::string_view::npos;
}

// Host adapters that show arrays, or disks behind their own firmware, as plain SCSI disks.
constexpr std::string_view kRaidDrivers[] = {
    "3w-9xxx",  "3w-sas", "3w-xxxx",      "aacraid", "arcmsr",   "cciss", "hpsa",    "hptiop", "ips",
    "megaraid", "mfi",    "megaraid_sas", "mpi3mr",  "smartpqi", "stex",  "pmcraid", "ipr",
};

bool isRaidHost(Machine& machine, std::string_view host) {
    const std::string driver = machine.text("sys/class/scsi_host/" + std::string(host) + "/proc_name");
    for (const std::string_view raid : kRaidDrivers) {
        if (driver == raid) return true;
    }
    return false;
}

// What one part of the path tells, or empty.
std::string interfaceOfPart(std::string_view part) {
    if (startsWith(part, "end_device-")) return "SAS";
    if (startsWith(part, "rport-")) return "FibreChannel";
    if (isNumbered(part, "session")) return "iSCSI";
    if (isNumbered(part, "ata")) return "SATA";
    if (isNumbered(part, "ide")) return "IDE";
    if (isNumbered(part, "usb")) return "USB";
    if (isNumbered(part, "virtio")) return "Virtio";
    if (startsWith(part, "vbd-")) return "Xen";
    // The bus's own number in the ACPI name space, and its name on kernels since 6.4.
    if (startsWith(part, "VMBUS:") || startsWith(part, "MSFT1000:") || startsWith(part, "vmbus_"))
        return "HyperV";
    if (part.find("ufs") != std::string_view::npos) return "UFS";
    if (isNumbered(part, "fw")) return "FireWire";
    return "";
}

}  // namespace

std::string blockInterface(Machine& machine, const std::string& path) {
    const std::string_view disk = baseName(path);
    if (startsWith(disk, "nvme")) return "NVMe";
    if (startsWith(disk, "dasd")) return "DASD";
    if (startsWith(disk, "xvd")) return "Xen";
    if (startsWith(disk, "mmcblk")) return machine.text(path + "/device/type") == "SD" ? "SD" : "MMC";
    std::string_view host;
    for (std::string_view rest = parentPath(path); !rest.empty(); rest = parentPath(rest)) {
        const std::string_view part = baseName(rest);
        if (isNumbered(part, "host")) host = part;
        std::string interface = interfaceOfPart(part);
        if (!interface.empty()) return interface;
    }
    if (host.empty()) return "";
    return isRaidHost(machine, host) ? "RAID" : "SCSI";
}
