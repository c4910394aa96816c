// Group "ComponentID": one instance, the identity of this system.
#include <string>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/container.h"
#include "scanners/zukhw/firmware_type.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/host_id.h"
#include "scanners/zukhw/host_identity.h"
#include "scanners/zukhw/hypervisor.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/placeholders.h"
#include "scanners/zukhw/smbios.h"
#include "scanners/zukhw/smbios_facts.h"
#include "scanners/zukhw/system_identity.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr unsigned kSystem = 1;
constexpr unsigned kChassis = 3;

void writeAssetTag(const Smbios& smbios, GroupWriter& out) {
    const std::string tag = cleanText(smbios.string(kChassis, 0x08));
    out.hardware("AssetTag", isPlaceholder(tag) ? mainBoardString(smbios, 0x08) : tag);
}

void writeBoard(const Smbios& smbios, GroupWriter& out) {
    out.hardware("BoardManufacturer", mainBoardString(smbios, 0x04));
    out.hardware("BoardModel", mainBoardString(smbios, 0x05));
    out.hardware("BoardVersion", mainBoardString(smbios, 0x06));
    out.hardware("BoardSerialNumber", mainBoardString(smbios, 0x07));
}

std::optional<bool> isVirtual(Machine& machine) {
    const Hypervisor& hypervisor = machine.shared<Hypervisor>();
    if (hypervisor.isGuest() || machine.shared<Container>().found) return true;
    return hypervisor.known ? std::optional(false) : std::nullopt;
}

}  // namespace

void collectComponentID(Machine& machine, GroupWriter& out) {
    const Smbios& smbios = machine.shared<Smbios>();
    const SystemIdentity& identity = machine.shared<SystemIdentity>();
    const HostIdentity& host = machine.shared<HostIdentity>();
    out.beginInstance();
    out.text("Manufacturer", identity.manufacturer);
    out.text("Model", identity.model);
    out.hardware("ModelVersion", smbios.string(kSystem, 0x06));
    out.hardware("Family", smbios.string(kSystem, 0x1A));
    out.hardware("Sku", smbios.string(kSystem, 0x19));
    out.text("SerialNumber", identity.serialNumber);
    out.text("SerialNumberSource", identity.serialNumberSource);
    out.text("Uuid", identity.uuid);
    writeAssetTag(smbios, out);
    writeBoard(smbios, out);
    out.hardware("ChassisSerialNumber", smbios.string(kChassis, 0x07));
    out.text("FirmwareType", machine.shared<FirmwareType>().name);
    out.text("MachineId", host.machineId);
    out.text("HostId", machine.shared<HostId>().text());
    out.text("HostName", host.name);
    out.boolean("Virtual", isVirtual(machine));
    out.text("IdSource", identity.source);
}
