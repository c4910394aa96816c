// Group "SMBIOS": one instance, the firmware's own words, not cleared of placeholders. Without the table,
// which only root may read, as much as the kernel shows of it.
#include <array>
#include <cstdio>
#include <map>
#include <string>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/sha256.h"
#include "scanners/zukhw/smbios.h"
#include "scanners/zukhw/smbios_devices.h"
#include "scanners/zukhw/smbios_facts.h"
#include "scanners/zukhw/smbios_names.h"

namespace {

enum Type : unsigned {
    kFirmware = 0,
    kSystem = 1,
    kBoard = 2,
    kChassis = 3,
    kOemStrings = 11,
    kConfigOptions = 12,
    kLanguages = 13,
    kArray = 16,
    kSecurity = 24,
    kBoot = 32,
    kIpmi = 38,
    kTpm = 43,
};

void writeTable(const Smbios& smbios, GroupWriter& out) {
    if (!smbios.available()) return out.text("TableSource", "sysfs-id");
    if (const auto version = smbios.version()) {
        out.text("SmbiosVersion", std::to_string(*version >> 8) + '.' + std::to_string(*version & 0xFFU));
    }
    std::map<unsigned, unsigned> counts;
    for (const SmbiosStructure& structure : smbios.structures()) ++counts[structure.type()];
    std::vector<std::string> types;
    types.reserve(counts.size());
    for (const auto& [type, count] : counts)
        types.push_back(std::to_string(type) + ':' + std::to_string(count));
    out.number("TableBytes", smbios.table().size());
    out.number("Structures", smbios.structures().size());
    out.list("StructureTypes", types);
    out.text("TableSource", smbios.source() == Smbios::Source::Tables ? "sysfs-tables" : "sysfs-entries");
    out.text("TableSha256", sha256Hex(smbios.table()));
}

std::optional<std::uint64_t> romBytes(const SmbiosStructure& firmware) {
    constexpr std::uint64_t kMega = 1024 * 1024;
    const auto blocks = firmware.byte(0x09);
    if (!blocks) return std::nullopt;
    // 16 MiB and more stand in a field of their own. Before version 3.1, without that field, FFh was 16 MiB.
    const auto extended = *blocks == 0xFF ? firmware.word(0x18) : std::nullopt;
    if (!extended) return (*blocks + 1U) * std::uint64_t{64} * 1024;
    const bool inGigabytes = *extended >> 14U == 1;
    return (*extended & 0x3FFFU) * (inGigabytes ? 1024 * kMega : kMega);
}

void writeFirmware(const Smbios& smbios, const SmbiosFacts& facts, GroupWriter& out) {
    const SmbiosStructure* firmware = smbios.first(kFirmware);
    out.text("BiosVendor", smbios.string(kFirmware, 0x04));
    out.text("BiosVersion", smbios.string(kFirmware, 0x05));
    out.text("BiosReleaseDate", smbios.string(kFirmware, 0x08));
    if (firmware != nullptr) {
        out.number("BiosRomBytes", romBytes(*firmware));
        if (const auto bits = firmware->qword(0x0A)) {
            std::array<char, 17> hex{};
            std::snprintf(hex.data(), hex.size(), "%016llx", static_cast<unsigned long long>(*bits));
            out.text("BiosCharacteristics", hex.data());
        }
    }
    out.text("BiosRelease", facts.biosRelease());
    out.text("EcRelease", facts.controllerRelease());
}

void writeSystem(const Smbios& smbios, const SmbiosFacts& facts, GroupWriter& out) {
    const SmbiosStructure* system = smbios.first(kSystem);
    out.text("SystemManufacturer", smbios.string(kSystem, 0x04));
    out.text("SystemProductName", smbios.string(kSystem, 0x05));
    out.text("SystemVersion", smbios.string(kSystem, 0x06));
    out.text("SystemSerialNumber", smbios.string(kSystem, 0x07));
    out.text("SystemUuid", facts.uuid());
    if (system != nullptr) out.text("SystemWakeUpType", wakeUpTypeName(system->byte(0x18).value_or(0)));
    out.text("SystemSku", smbios.string(kSystem, 0x19));
    out.text("SystemFamily", smbios.string(kSystem, 0x1A));
}

void writeBoard(const Smbios& smbios, GroupWriter& out) {
    const SmbiosStructure* board = mainBoard(smbios);
    out.text("BoardManufacturer", mainBoardString(smbios, 0x04));
    out.text("BoardProduct", mainBoardString(smbios, 0x05));
    out.text("BoardVersion", mainBoardString(smbios, 0x06));
    out.text("BoardSerialNumber", mainBoardString(smbios, 0x07));
    out.text("BoardAssetTag", mainBoardString(smbios, 0x08));
    if (board == nullptr) return;
    out.text("BoardType", boardTypeName(board->byte(0x0D).value_or(0)));
    out.text("BoardLocation", board->string(0x0A));
}

void writeChassis(const Smbios& smbios, const SmbiosFacts& facts, GroupWriter& out) {
    const SmbiosStructure* chassis = smbios.first(kChassis);
    out.text("ChassisManufacturer", smbios.string(kChassis, 0x04));
    out.text("ChassisType", chassisTypeName(facts.chassisType().value_or(0)));
    out.text("ChassisVersion", smbios.string(kChassis, 0x06));
    out.text("ChassisSerialNumber", smbios.string(kChassis, 0x07));
    out.text("ChassisAssetTag", smbios.string(kChassis, 0x08));
    if (chassis != nullptr) out.text("ChassisSku", chassisSku(*chassis));
}

std::vector<std::string> stringsOf(const Smbios& smbios, unsigned type) {
    std::vector<std::string> all;
    for (const SmbiosStructure* structure : smbios.ofType(type)) {
        for (const std::string_view text : structure->strings()) all.emplace_back(text);
    }
    return all;
}

std::vector<std::string> securitySettings(const Smbios& smbios) {
    static constexpr std::pair<const char*, unsigned> kSettings[] = {{"Power-On Password", 6},
                                                                     {"Keyboard Password", 4},
                                                                     {"Administrator Password", 2},
                                                                     {"Front Panel Reset", 0}};
    const SmbiosStructure* security = smbios.first(kSecurity);
    const auto bits = security != nullptr ? security->byte(0x04) : std::nullopt;
    std::vector<std::string> settings;
    if (!bits) return settings;
    for (const auto& [name, shift] : kSettings) {
        const std::string_view state = hardwareSecurityName(*bits >> shift & 3U);
        if (!state.empty()) settings.push_back(std::string(name) + '=' + std::string(state));
    }
    return settings;
}

void writeManagement(const Smbios& smbios, GroupWriter& out) {
    if (const SmbiosStructure* ipmi = smbios.first(kIpmi)) {
        out.text("IpmiSpecification", ipmiSpecification(*ipmi));
        out.text("IpmiInterface", ipmiInterfaceName(ipmi->byte(0x04).value_or(0)));
    }
    if (const SmbiosStructure* tpm = smbios.first(kTpm)) {
        out.text("TpmVendor", tpm->bytes(0x04, 4));
        out.text("TpmSpec", tpmSpecification(*tpm));
    }
}

}  // namespace

void collectSMBIOS(Machine& machine, GroupWriter& out) {
    const Smbios& smbios = machine.shared<Smbios>();
    const SmbiosFacts& facts = machine.shared<SmbiosFacts>();
    if (!smbios.available() && !smbios.hasIdentity()) return;
    out.beginInstance();
    writeTable(smbios, out);
    writeFirmware(smbios, facts, out);
    writeSystem(smbios, facts, out);
    writeBoard(smbios, out);
    writeChassis(smbios, facts, out);
    out.list("OemStrings", stringsOf(smbios, kOemStrings));
    out.list("SystemConfigOptions", stringsOf(smbios, kConfigOptions));
    if (const SmbiosStructure* boot = smbios.first(kBoot)) {
        if (const auto status = boot->byte(0x0A)) out.text("BootStatus", bootStatusName(*status));
    }
    out.list("OnboardDevices", onboardDevices(smbios));
    out.list("Slots", slots(smbios));
    out.list("PortConnectors", portConnectors(smbios));
    writeManagement(smbios, out);
    out.list("PowerSupplies", powerSupplies(smbios));
    out.list("SecuritySettings", securitySettings(smbios));
    if (const SmbiosStructure* array = smbios.first(kArray)) {
        out.text("MemoryErrorCorrection", errorCorrectionName(array->byte(0x06).value_or(0)));
    }
    out.list("BiosLanguages", stringsOf(smbios, kLanguages));
}
