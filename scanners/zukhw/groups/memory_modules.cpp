// Group "MemoryModules": one instance per SMBIOS memory device (type 17), empty slots included, in the order
// of their handles; else what the device tree or the memory controller's driver tells.
#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/jep106.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/memory_array.h"
#include "scanners/zukhw/memory_modules.h"
#include "scanners/zukhw/placeholders.h"
#include "scanners/zukhw/smbios.h"
#include "scanners/zukhw/smbios_names.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr unsigned kDevice = 17;

std::string hexHandle(unsigned handle) {
    std::array<char, 5> text{};
    std::snprintf(text.data(), text.size(), "%04x", handle & 0xFFFFU);
    return text.data();
}

// 0 and FFFFh are both what firmware says when it does not know.
std::optional<std::uint16_t> knownWord(const SmbiosStructure& device, std::size_t offset) {
    const auto value = device.word(offset);
    return value && *value != 0 && *value != 0xFFFF ? value : std::nullopt;
}

std::optional<std::uint64_t> knownBytes(const SmbiosStructure& device, std::size_t offset) {
    const auto value = device.qword(offset);
    return value && *value != UINT64_MAX ? value : std::nullopt;
}

// Transfers per second; from 65,535 on in a field of their own.
std::optional<std::uint32_t> speed(const SmbiosStructure& device, std::size_t offset, std::size_t extended) {
    const auto value = device.word(offset);
    if (!value || *value == 0) return std::nullopt;
    if (*value != 0xFFFF) return *value;
    const auto large = device.dword(extended);
    if (!large || (*large & 0x7FFFFFFFU) == 0) return std::nullopt;
    return *large & 0x7FFFFFFFU;
}

void writeKind(const SmbiosStructure& device, GroupWriter& out) {
    constexpr unsigned kUnknown = 2;
    const unsigned type = device.byte(0x12).value_or(kUnknown);
    out.text("Type", memoryTypeName(type));
    if (type != kUnknown) out.number("TypeCode", type);
    std::vector<std::string> details;
    const unsigned bits = device.word(0x13).value_or(0);
    for (unsigned bit = 0; bit < 16; ++bit) {
        if ((bits >> bit & 1U) != 0) details.emplace_back(memoryDetailName(bit));
    }
    out.list("TypeDetail", details);
}

void writeWidths(const SmbiosStructure& device, GroupWriter& out) {
    const auto total = knownWord(device, 0x08);
    const auto data = knownWord(device, 0x0A);
    out.number("TotalWidthBits", total);
    out.number("DataWidthBits", data);
    if (total && data) out.boolean("Ecc", *total > *data);
}

void writePerformance(const SmbiosStructure& device, GroupWriter& out) {
    out.number("MaxSpeedMTs", speed(device, 0x15, 0x54));
    out.number("ConfiguredSpeedMTs", speed(device, 0x20, 0x58));
    out.number("MinVoltageMillivolts", knownWord(device, 0x22));
    out.number("MaxVoltageMillivolts", knownWord(device, 0x24));
    out.number("ConfiguredVoltageMillivolts", knownWord(device, 0x26));
}

// The name for a maker that the firmware gives by its code alone.
std::string_view makerName(const SmbiosStructure& device) {
    const std::string maker = cleanText(device.string(0x17));
    const bool isName =
        !isPlaceholder(maker) && maker.find_first_not_of("0123456789abcdefABCDEFxX") != std::string::npos;
    if (isName) return {};
    const std::string_view name = jep106NameOfText(maker);
    if (!name.empty()) return name;
    const auto code = knownWord(device, 0x2C);
    return code ? jep106Name(*code & 0xFFU, *code >> 8U) : std::string_view();
}

void writeIdentity(const SmbiosStructure& device, GroupWriter& out) {
    out.hardware("Manufacturer", device.string(0x17));
    out.text("ManufacturerName", makerName(device));
    out.hardware("PartNumber", device.string(0x1A));
    out.hardware("SerialNumber", device.string(0x18));
    out.hardware("AssetTag", device.string(0x19));
}

void writeModule(const SmbiosStructure& device, GroupWriter& out) {
    constexpr unsigned kRankBits = 0x0F;
    out.number("SizeBytes", memoryDeviceBytes(device));
    out.number("NonVolatileBytes", knownBytes(device, 0x34));
    out.number("VolatileBytes", knownBytes(device, 0x3C));
    out.text("FormFactor", memoryFormFactorName(device.byte(0x0E).value_or(0)));
    writeKind(device, out);
    writeWidths(device, out);
    writePerformance(device, out);
    writeIdentity(device, out);
    const unsigned rank = device.byte(0x1B).value_or(0) & kRankBits;
    if (rank != 0) out.number("Rank", rank);
    out.text("Technology", memoryTechnologyName(device.byte(0x28).value_or(0)));
    out.hardware("FirmwareVersion", device.string(0x2B));
}

void writeDevice(const Smbios& smbios, const SmbiosStructure& device, GroupWriter& out) {
    const bool populated = device.word(0x0C).value_or(0) != 0;
    const SmbiosStructure* array = memoryArrayOf(smbios, device);
    out.beginInstance();
    out.boolean("Populated", populated);
    out.hardware("Locator", device.string(0x10));
    out.hardware("BankLocator", device.string(0x11));
    if (populated) {
        writeModule(device, out);
    } else {
        out.text("FormFactor", memoryFormFactorName(device.byte(0x0E).value_or(0)));
    }
    if (populated && array != nullptr) {
        out.text("ArrayLocation", arrayLocationName(array->byte(0x04).value_or(0)));
        out.text("ArrayUse", arrayUseName(array->byte(0x05).value_or(0)));
    }
    if (const auto handle = device.word(0x04)) out.text("ArrayHandle", hexHandle(*handle));
    out.text("Handle", hexHandle(device.handle()));
    const auto range = populated ? mappedRange(smbios, device) : std::nullopt;
    if (!range) return;
    out.number("MappedStart", range->first);
    out.number("MappedEnd", range->last);
}

}  // namespace

void collectMemoryModules(Machine& machine, GroupWriter& out) {
    const Smbios& smbios = machine.shared<Smbios>();
    for (const SmbiosStructure* device : byHandle(smbios.ofType(kDevice))) writeDevice(smbios, *device, out);
    if (smbios.available()) return;
    if (!writeDeviceTreeModules(machine, out)) writeEdacModules(machine, out);
}
