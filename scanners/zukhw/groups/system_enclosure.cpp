// Group "SystemEnclosure": one instance per SMBIOS enclosure (type 3) in the order of their handles, else one
// of what the kernel or the device tree shows of it.
#include <algorithm>
#include <string>
#include <vector>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/device_tree.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/smbios.h"
#include "scanners/zukhw/smbios_devices.h"
#include "scanners/zukhw/smbios_facts.h"
#include "scanners/zukhw/smbios_names.h"

namespace {

constexpr unsigned kChassis = 3;
constexpr unsigned kPowerSupply = 39;
constexpr unsigned kUnknownType = 2;

void writeType(unsigned type, GroupWriter& out) {
    if (type == kUnknownType) return;
    out.text("Type", chassisTypeName(type));
    out.number("TypeCode", type);
}

void writePortable(unsigned type, GroupWriter& out) {
    if (type != kUnknownType) out.boolean("Portable", isPortableChassis(type));
}

std::optional<std::uint8_t> unlessZero(std::optional<std::uint8_t> value) {
    return value && *value != 0 ? value : std::nullopt;
}

void writeStates(const SmbiosStructure& chassis, GroupWriter& out) {
    const auto code = [&](std::size_t offset) { return chassis.byte(offset).value_or(0); };
    out.text("BootState", chassisStateName(code(0x09)));
    out.text("PowerSupplyState", chassisStateName(code(0x0A)));
    out.text("ThermalState", chassisStateName(code(0x0B)));
    out.text("SecurityStatus", chassisSecurityName(code(0x0C)));
}

void writeChassis(const SmbiosStructure& chassis, GroupWriter& out) {
    constexpr unsigned kLocked = 0x80;
    const auto typeByte = chassis.byte(0x05);
    const unsigned type = typeByte.value_or(kUnknownType) & ~kLocked;
    out.beginInstance();
    out.hardware("Manufacturer", chassis.string(0x04));
    writeType(type, out);
    if (typeByte) out.boolean("Lock", (*typeByte & kLocked) != 0);
    out.hardware("Version", chassis.string(0x06));
    out.hardware("SerialNumber", chassis.string(0x07));
    out.hardware("AssetTag", chassis.string(0x08));
    writeStates(chassis, out);
    out.number("HeightUnits", unlessZero(chassis.byte(0x11)));
    out.number("PowerCords", unlessZero(chassis.byte(0x12)));
    out.number("ContainedElements", chassis.byte(0x13));
    out.hardware("Sku", chassisSku(chassis));
    writePortable(type, out);
}

std::optional<std::size_t> powerSuppliesPresent(const Smbios& smbios) {
    constexpr unsigned kPresent = 1U << 1;
    const std::vector<const SmbiosStructure*> supplies = smbios.ofType(kPowerSupply);
    if (supplies.empty()) return std::nullopt;
    return static_cast<std::size_t>(std::count_if(
        supplies.begin(), supplies.end(),
        [](const SmbiosStructure* supply) { return (supply->word(0x0E).value_or(0) & kPresent) != 0; }));
}

// What is left for ordinary users, and for machines without SMBIOS.
void writeWithoutTable(Machine& machine, GroupWriter& out) {
    const Smbios& smbios = machine.shared<Smbios>();
    const unsigned type = machine.shared<SmbiosFacts>().chassisType().value_or(kUnknownType);
    out.beginInstance();
    out.hardware("Manufacturer", smbios.string(kChassis, 0x04));
    writeType(type, out);
    if (type == kUnknownType) out.text("Type", deviceTreeText(machine, "chassis-type"));
    out.hardware("Version", smbios.string(kChassis, 0x06));
    out.hardware("SerialNumber", smbios.string(kChassis, 0x07));
    out.hardware("AssetTag", smbios.string(kChassis, 0x08));
    writePortable(type, out);
}

}  // namespace

void collectSystemEnclosure(Machine& machine, GroupWriter& out) {
    const Smbios& smbios = machine.shared<Smbios>();
    if (!smbios.available()) return writeWithoutTable(machine, out);
    bool first = true;
    for (const SmbiosStructure* chassis : byHandle(smbios.ofType(kChassis))) {
        writeChassis(*chassis, out);
        // The table does not tell in which enclosure they are.
        if (first) out.number("PowerSupplies", powerSuppliesPresent(smbios));
        first = false;
    }
}
