#include "scanners/zukhw/firmware_type.h"

#include "scanners/zukhw/architecture.h"
#include "scanners/zukhw/device_tree.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

namespace {

bool isX86(const std::string& architecture) {
    const bool is32 = architecture.size() == 4 && architecture[0] == 'i' && endsWith(architecture, "86");
    return is32 || architecture == "x86_64";
}

std::string_view findType(Machine& machine) {
    if (machine.exists("sys/firmware/efi")) return "UEFI";
    if (!deviceTreeRoot(machine).empty()) return "DeviceTree";
    // Containers hide the directory's entries, so that an empty one tells nothing.
    if (!isX86(machine.shared<Architecture>().name()) || machine.list("sys/firmware").empty()) return "";
    return "BIOS";
}

}  // namespace

FirmwareType::FirmwareType(Machine& machine) : name(findType(machine)) {}
