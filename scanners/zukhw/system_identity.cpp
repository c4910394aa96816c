#include "scanners/zukhw/system_identity.h"

#include "scanners/zukhw/device_tree.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/partition_files.h"
#include "scanners/zukhw/placeholders.h"
#include "scanners/zukhw/smbios.h"
#include "scanners/zukhw/smbios_facts.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/uuid.h"

namespace {

constexpr unsigned kSystem = 1;
constexpr unsigned kChassis = 3;

std::string unlessPlaceholder(std::string_view value) {
    std::string clean = cleanText(value);
    return isPlaceholder(clean) ? "" : clean;
}

bool readSmbios(const Smbios& smbios, SystemIdentity* identity) {
    identity->manufacturer = unlessPlaceholder(smbios.string(kSystem, 0x04));
    identity->model = unlessPlaceholder(smbios.string(kSystem, 0x05));
    if (identity->model.empty()) identity->model = unlessPlaceholder(mainBoardString(smbios, 0x05));
    return !identity->manufacturer.empty() || !identity->model.empty();
}

bool readDeviceTree(Machine& machine, SystemIdentity* identity) {
    identity->model = unlessPlaceholder(deviceTreeText(machine, "model"));
    const std::size_t comma = identity->model.find(',');
    if (comma != std::string::npos) identity->manufacturer = identity->model.substr(0, comma);
    return !identity->model.empty();
}

// "Model: 701   N63": the first word, which the second only details.
bool readSysInfo(const SysInfo& info, SystemIdentity* identity) {
    identity->manufacturer = unlessPlaceholder(info.value("Manufacturer"));
    const std::string_view type = info.value("Type");
    const std::vector<std::string_view> model = words(info.value("Model"));
    identity->model = type;
    if (!type.empty() && !model.empty()) identity->model += '-' + std::string(model[0]);
    return !identity->manufacturer.empty() || !identity->model.empty();
}

struct SerialNumber {
    std::string text;
    const char* source;
};

void readSerialNumber(Machine& machine, SystemIdentity* identity) {
    const Smbios& smbios = machine.shared<Smbios>();
    const bool hasTree = !deviceTreeRoot(machine).empty();
    const SerialNumber candidates[] = {
        {smbios.string(kSystem, 0x07), "System"},
        {smbios.string(kChassis, 0x07), "Chassis"},
        {mainBoardString(smbios, 0x07), "Board"},
        {hasTree ? deviceTreeText(machine, "serial-number") : "", "DeviceTree"},
        {hasTree ? deviceTreeText(machine, "system-id") : "", "DeviceTree"},
        {std::string(machine.shared<SysInfo>().value("Sequence Code")), "SysInfo"},
        {machine.exists("sys/devices/soc0") ? machine.text("sys/devices/soc0/serial_number") : "", "Soc"},
    };
    for (const SerialNumber& candidate : candidates) {
        identity->serialNumber = unlessPlaceholder(candidate.text);
        if (identity->serialNumber.empty()) continue;
        identity->serialNumberSource = candidate.source;
        return;
    }
}

}  // namespace

SystemIdentity::SystemIdentity(Machine& machine) : source("None") {
    if (readSmbios(machine.shared<Smbios>(), this)) {
        source = "SMBIOS";
    } else if (readDeviceTree(machine, this)) {
        source = "DeviceTree";
    } else if (readSysInfo(machine.shared<SysInfo>(), this)) {
        source = "SysInfo";
    }
    readSerialNumber(machine, this);
    uuid = toLower(machine.shared<SmbiosFacts>().uuid());
    if (isPlaceholderUuid(uuid)) uuid.clear();
    if (uuid.empty() && machine.exists("sys/hypervisor"))
        uuid = cleanUuid(machine.text("sys/hypervisor/uuid"));
    if (isPlaceholderUuid(uuid)) uuid.clear();
}
