#include "scanners/zukhw/pci_devices.h"

#include <algorithm>
#include <tuple>

#include "scanners/zukhw/device_path.h"
#include "scanners/zukhw/hex.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kDirectory[] = "sys/bus/pci/devices";

unsigned hexPart(std::string_view digits) {
    return static_cast<unsigned>(parseHex(digits).value_or(0));
}

// Of text that isPciAddress approved.
PciPlace parsePlace(std::string_view address) {
    const std::size_t domain = address.find(':');
    const std::string_view rest = address.substr(domain + 1);
    return {hexPart(address.substr(0, domain)), hexPart(rest.substr(0, 2)), hexPart(rest.substr(3, 2)),
            hexPart(rest.substr(6, 1))};
}

bool isBefore(const PciDevice& a, const PciDevice& b) {
    const auto order = [](const PciPlace& place) {
        return std::tie(place.domain, place.bus, place.device, place.function);
    };
    return order(a.place) < order(b.place);
}

// "8086:10D3"
void parsePair(std::string_view text, std::string* first, std::string* second) {
    const std::size_t colon = std::min(text.find(':'), text.size());
    *first = hex(parseHex(text.substr(0, colon)), 4);
    *second = hex(parseHex(text.substr(std::min(colon + 1, text.size()))), 4);
}

// One file has nearly all that is asked of every device; not every copy of a machine has that file.
void readFromEvent(std::string_view event, PciDevice* device) {
    const auto value = [&](const char* key) { return findValue(event, key, '=').value_or(""); };
    parsePair(value("PCI_ID"), &device->vendor, &device->device);
    parsePair(value("PCI_SUBSYS_ID"), &device->subsystemVendor, &device->subsystemDevice);
    device->classCode = hex(parseHex(value("PCI_CLASS")), 6);
    device->driver = value("DRIVER");
}

void readFromAttributes(Machine& machine, PciDevice* device) {
    device->vendor = readDeviceId(machine, device->path + "/vendor");
    device->device = readDeviceId(machine, device->path + "/device");
    device->subsystemVendor = readDeviceId(machine, device->path + "/subsystem_vendor");
    device->subsystemDevice = readDeviceId(machine, device->path + "/subsystem_device");
    device->classCode = hex(machine.hexNumber(device->path + "/class"), 6);
    device->driver = machine.linkName(device->path + "/driver");
}

// Bridges and old parts have no subsystem of their own.
void dropEmptySubsystem(PciDevice* device) {
    if (device->subsystemVendor != "0000" && device->subsystemVendor != "ffff") return;
    device->subsystemVendor.clear();
    device->subsystemDevice.clear();
}

PciDevice readDevice(Machine& machine, const std::string& address) {
    PciDevice device;
    device.place = parsePlace(address);
    device.address = address;
    device.path = std::string(kDirectory) + '/' + address;
    const std::string target = machine.link(device.path);
    device.parent = baseName(pciAncestor(parentPath(target)));
    readFromEvent(machine.text(device.path + "/uevent"), &device);
    if (device.vendor.empty()) readFromAttributes(machine, &device);
    dropEmptySubsystem(&device);
    return device;
}

}  // namespace

PciDevices::PciDevices(Machine& machine) {
    for (const std::string& name : machine.listUnordered(kDirectory)) {
        if (isPciAddress(name)) devices_.push_back(readDevice(machine, name));
    }
    std::sort(devices_.begin(), devices_.end(), isBefore);
}

const PciDevice* PciDevices::find(std::string_view address) const {
    const auto found = std::find_if(devices_.begin(), devices_.end(),
                                    [&](const PciDevice& device) { return device.address == address; });
    return found == devices_.end() ? nullptr : &*found;
}
