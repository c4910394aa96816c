// Group "PCSystemParams": one instance, facts of the firmware and the platform.
#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/firmware_type.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/numa_nodes.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/power_supplies.h"
#include "scanners/zukhw/smbios.h"
#include "scanners/zukhw/smbios_devices.h"
#include "scanners/zukhw/smbios_facts.h"
#include "scanners/zukhw/smbios_names.h"
#include "scanners/zukhw/text.h"

namespace {

enum Type : unsigned { kFirmware = 0, kSystem = 1, kIpmi = 38, kTpm = 43 };

// "05/21/2019", or with two digits the years 1900 to 1999, as "2019-05-21"; empty for any other form.
std::string isoDate(std::string_view date) {
    const std::vector<std::string_view> parts = split(trim(date), '/');
    if (parts.size() != 3 || (parts[2].size() != 2 && parts[2].size() != 4)) return "";
    const auto month = parseDecimal(parts[0]);
    const auto day = parseDecimal(parts[1]);
    auto year = parseDecimal(parts[2]);
    if (!month || !day || !year || *month < 1 || *month > 12 || *day < 1 || *day > 31) return "";
    if (parts[2].size() == 2) year = 1900 + *year;
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%04u-%02u-%02u", static_cast<unsigned>(*year),
                  static_cast<unsigned>(*month), static_cast<unsigned>(*day));
    return text.data();
}

// A variable of UEFI's own: four bytes of attributes, then one that is 0 or 1.
std::optional<bool> efiFlag(Machine& machine, const char* name) {
    static const std::string kDirectory = "sys/firmware/efi/efivars/";
    static const std::string kGlobal = "-8be4df61-93ca-11d2-aa0d-00e098032b8c";
    const auto variable = machine.read(kDirectory + name + kGlobal);
    if (!variable || variable->size() != 5) return std::nullopt;
    return variable->back() == 1;
}

void writeFirmware(Machine& machine, const Smbios& smbios, GroupWriter& out) {
    const SmbiosFacts& facts = machine.shared<SmbiosFacts>();
    out.hardware("BiosVendor", smbios.string(kFirmware, 0x04));
    out.hardware("BiosVersion", smbios.string(kFirmware, 0x05));
    out.text("BiosDate", isoDate(smbios.string(kFirmware, 0x08)));
    out.text("BiosRelease", facts.biosRelease());
    out.text("EmbeddedControllerRelease", facts.controllerRelease());
    const std::string_view type = machine.shared<FirmwareType>().name;
    out.text("FirmwareType", type);
    if (type != "UEFI") return;
    out.boolean("SecureBoot", efiFlag(machine, "SecureBoot"));
    out.boolean("SetupMode", efiFlag(machine, "SetupMode"));
    out.number("FirmwareBits", machine.number("sys/firmware/efi/fw_platform_size"));
}

std::string tpmVersion(Machine& machine, const Smbios& smbios) {
    const std::string major = machine.text("sys/class/tpm/tpm0/tpm_version_major");
    const SmbiosStructure* tpm = smbios.first(kTpm);
    return major.empty() && tpm != nullptr ? tpmSpecification(*tpm) : major;
}

std::vector<std::string> acpiTables(Machine& machine) {
    std::vector<std::string> tables;
    for (const std::string& name : machine.list("sys/firmware/acpi/tables")) {
        if (name != "data" && name != "dynamic") tables.push_back(name);  // directories of other tables
    }
    return tables;
}

// The use that the maker had in mind (ACPI, field Preferred_PM_Profile).
std::string_view powerProfile(Machine& machine) {
    static constexpr std::string_view kNames[] = {
        "",
        "Desktop",
        "Mobile",
        "Workstation",
        "Enterprise Server",
        "SOHO Server",
        "Appliance PC",
        "Performance Server",
        "Tablet",
    };
    const auto code = machine.number("sys/firmware/acpi/pm_profile");
    return code && *code < std::size(kNames) ? kNames[*code] : std::string_view();
}

std::optional<bool> portable(Machine& machine) {
    constexpr unsigned kUnknown = 2;
    const auto type = machine.shared<SmbiosFacts>().chassisType();
    if (!type || *type == kUnknown) return std::nullopt;
    return isPortableChassis(*type);
}

void writeBattery(const Battery& battery, std::size_t number, GroupWriter& out) {
    const std::string prefix = "Battery" + std::to_string(number);
    const auto name = [&](const char* field) { return prefix + field; };
    out.hardware(name("Manufacturer").c_str(), battery.manufacturer);
    out.hardware(name("Model").c_str(), battery.model);
    out.hardware(name("SerialNumber").c_str(), battery.serialNumber);
    out.hardware(name("Technology").c_str(), battery.technology);
    out.number(name("DesignMilliwattHours").c_str(), battery.designMilliwattHours);
    out.number(name("FullMilliwattHours").c_str(), battery.fullMilliwattHours);
    out.number(name("Cycles").c_str(), battery.cycles);
}

void writePower(Machine& machine, GroupWriter& out) {
    const PowerSupplies& supplies = machine.shared<PowerSupplies>();
    if (!supplies.known) return;
    out.boolean("BatteryPresent", !supplies.batteries.empty());
    for (std::size_t i = 0; i < supplies.batteries.size(); ++i)
        writeBattery(supplies.batteries[i], i + 1, out);
    out.boolean("AcOnline", supplies.acOnline);
}

// " 0 [PCH            ]: HDA-Intel - HDA Intel PCH"; each has a second line with addresses.
std::vector<std::string> soundDevices(Machine& machine) {
    std::vector<std::string> devices;
    const std::string cards = machine.read("proc/asound/cards").value_or("");
    for (const std::string_view line : lines(cards)) {
        const std::size_t head = line.find("]: ");
        if (head == std::string_view::npos) continue;
        const std::string_view names = line.substr(head + 3);
        const std::size_t dash = names.find(" - ");
        devices.emplace_back(dash == std::string_view::npos ? names : names.substr(dash + 3));
    }
    return devices;
}

std::vector<std::string> watchdogs(Machine& machine) {
    static const std::string kDirectory = "sys/class/watchdog/";
    std::vector<std::string> names;
    for (const std::string& device : machine.list("sys/class/watchdog")) {
        const std::string path = kDirectory + device;
        names.push_back(machine.text(path + "/identity"));
    }
    return names;
}

// The one in brackets: "none [integrity] confidentiality".
std::string kernelLockdown(Machine& machine) {
    const std::string modes = machine.text("sys/kernel/security/lockdown");
    const std::size_t open = modes.find('[');
    const std::size_t close = modes.find(']');
    if (open == std::string::npos || close == std::string::npos || close < open) return "";
    return modes.substr(open + 1, close - open - 1);
}

}  // namespace

void collectPCSystemParams(Machine& machine, GroupWriter& out) {
    const Smbios& smbios = machine.shared<Smbios>();
    out.beginInstance();
    writeFirmware(machine, smbios, out);
    out.text("TpmVersion", tpmVersion(machine, smbios));
    out.list("AcpiTables", acpiTables(machine));
    out.text("PowerProfile", powerProfile(machine));
    if (const SmbiosStructure* system = smbios.first(kSystem)) {
        out.text("WakeUpType", wakeUpTypeName(system->byte(0x18).value_or(0)));
    }
    out.boolean("Portable", portable(machine));
    writePower(machine, out);
    out.list("SoundDevices", soundDevices(machine));
    out.list("Watchdog", watchdogs(machine));
    if (const SmbiosStructure* ipmi = smbios.first(kIpmi)) out.text("Ipmi", ipmiSpecification(*ipmi));
    out.number("NumaNodes", machine.shared<NumaNodes>().count());
    out.text("KernelLockdown", kernelLockdown(machine));
}
