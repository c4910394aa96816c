// Group "PCIDevice": one instance per function on the PCI buses, ordered by address.
#include <algorithm>
#include <map>
#include <string>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/device_names.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/hex.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/pci_devices.h"
#include "scanners/zukhw/pci_link.h"
#include "scanners/zukhw/pci_vpd.h"
#include "scanners/zukhw/smbios.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kBridge[] = "06";

// The names of slots by the address of what is in them, which has no function ("0000:03:00").
std::map<std::string, std::string> physicalSlots(Machine& machine) {
    std::map<std::string, std::string> slots;
    for (const std::string& name : machine.list("sys/bus/pci/slots")) {
        slots.emplace(machine.text("sys/bus/pci/slots/" + name + "/address"), name);
    }
    return slots;
}

bool isAt(const PciPlace& place, std::optional<std::uint16_t> segment, std::optional<std::uint8_t> bus,
          std::optional<std::uint8_t> deviceAndFunction) {
    return segment == place.domain && bus == place.bus &&
           deviceAndFunction == (place.device << 3 | place.function);
}

// What the board's maker calls the place: its slots (type 9) and what is soldered on (type 41).
std::string_view slotDesignation(const Smbios& smbios, const PciPlace& place) {
    for (const SmbiosStructure* slot : smbios.ofType(9)) {
        if (isAt(place, slot->word(0x0D), slot->byte(0x0F), slot->byte(0x10))) return slot->string(0x04);
    }
    for (const SmbiosStructure* onboard : smbios.ofType(41)) {
        if (isAt(place, onboard->word(0x07), onboard->byte(0x09), onboard->byte(0x0A)))
            return onboard->string(0x04);
    }
    return {};
}

void writeIds(Machine& machine, const PciDevice& device, GroupWriter& out) {
    out.text("Address", device.address);
    out.text("VendorId", device.vendor);
    out.text("DeviceId", device.device);
    out.text("SubsystemVendorId", device.subsystemVendor);
    out.text("SubsystemDeviceId", device.subsystemDevice);
    out.text("Revision", hex(machine.hexNumber(device.path + "/revision"), 2));
    out.text("ClassCode", device.classCode);
}

void writeNames(Machine& machine, const PciDevice& device, GroupWriter& out) {
    DeviceNames& names = machine.shared<DeviceNames>();
    out.text("Vendor", names.pciVendor(device.vendor));
    out.text("Device", names.pciDevice(device.vendor, device.device));
    out.text("SubsystemVendor", names.pciVendor(device.subsystemVendor));
    out.text("Subsystem", names.pciSubsystem(device.vendor, device.device, device.subsystemVendor,
                                             device.subsystemDevice));
    out.text("ClassName", names.pciClass(device.baseClass()));
    out.text("SubclassName", names.pciSubclass(device.baseClass(), device.subclass()));
}

void writeResources(Machine& machine, const PciDevice& device, GroupWriter& out) {
    out.text("Driver", device.driver);
    const auto irq = machine.number(device.path + "/irq");
    if (irq != 0U) out.number("Irq", irq);
    const auto node = machine.signedNumber(device.path + "/numa_node");
    if (node && *node >= 0) out.number("NumaNode", *node);
    writePciLink(machine, device.path, out);
}

void writePlace(Machine& machine, const PciDevice& device, const std::map<std::string, std::string>& slots,
                GroupWriter& out) {
    const auto slot = slots.find(device.address.substr(0, device.address.find('.')));
    if (slot != slots.end()) out.text("PhysicalSlot", slot->second);
    out.hardware("SlotDesignation", slotDesignation(machine.shared<Smbios>(), device.place));
    std::string label = machine.text(device.path + "/label");
    if (label.empty()) label = machine.text(device.path + "/acpi_index");
    out.hardware("Label", label);
    out.boolean("Bridge", device.baseClass() == kBridge);
    out.text("ParentAddress", device.parent);
    const std::string removable = machine.text(device.path + "/removable");
    if (removable == "removable" || removable == "fixed") out.boolean("Removable", removable == "removable");
}

std::vector<std::string> virtualFunctions(Machine& machine, const PciDevice& device) {
    constexpr std::uint64_t kMost = 65535;  // the register has 16 bits
    const auto count = std::min(machine.number(device.path + "/sriov_numvfs").value_or(0), kMost);
    std::vector<std::string> addresses;
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::string address = machine.linkName(device.path + "/virtfn" + std::to_string(i));
        if (address.empty()) break;
        addresses.push_back(address);
    }
    return addresses;
}

void writeDevice(Machine& machine, const PciDevice& device, const std::map<std::string, std::string>& slots,
                 GroupWriter& out) {
    machine.files().stayIn(device.path);
    writeIds(machine, device, out);
    writeNames(machine, device, out);
    writeResources(machine, device, out);
    writePlace(machine, device, slots, out);
    out.text("PhysicalFunction", machine.linkName(device.path + "/physfn"));
    out.list("VirtualFunctions", virtualFunctions(machine, device));
    // Reading further is slow: the device itself answers, four bytes at a time.
    const auto productData = machine.readHead(device.path + "/vpd", 256);
    if (productData) out.hardware("SerialNumber", pciSerialNumber(*productData));
    const auto boot = machine.number(device.path + "/boot_vga");
    if (boot) out.boolean("BootVga", *boot == 1);
}

}  // namespace

void collectPCIDevice(Machine& machine, GroupWriter& out) {
    const std::vector<PciDevice>& devices = machine.shared<PciDevices>().all();
    if (devices.empty()) return;
    const std::map<std::string, std::string> slots = physicalSlots(machine);
    for (const PciDevice& device : devices) {
        out.beginInstance();
        writeDevice(machine, device, slots, out);
    }
}
