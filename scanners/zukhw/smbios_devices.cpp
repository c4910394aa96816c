#include "scanners/zukhw/smbios_devices.h"

#include <array>
#include <cstdio>

#include "scanners/zukhw/smbios.h"
#include "scanners/zukhw/smbios_names.h"
#include "scanners/zukhw/text.h"

namespace {

enum Type : unsigned { kPort = 8, kSlot = 9, kOldOnboard = 10, kPowerSupply = 39, kOnboard = 41 };

// An item of parts, of which the unknown ones are empty.
std::string item(std::initializer_list<std::string_view> parts) {
    std::vector<std::string> known;
    for (const std::string_view part : parts) {
        std::string clean = cleanText(part);
        if (!clean.empty()) known.push_back(std::move(clean));
    }
    return join(known, " ");
}

// "0000:00:1f.2"; empty when the firmware says that the device has none.
std::string pciAddress(const SmbiosStructure& structure, std::size_t segmentOffset) {
    const auto segment = structure.word(segmentOffset);
    const auto bus = structure.byte(segmentOffset + 2);
    const auto function = structure.byte(segmentOffset + 3);
    if (!segment || !bus || !function) return "";
    if (*segment == 0xFFFF || (*bus == 0xFF && *function == 0xFF)) return "";
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%04x:%02x:%02x.%x", *segment, *bus, *function >> 3U,
                  *function & 7U);
    return text.data();
}

std::string onboardItem(std::string_view designation, unsigned type, const std::string& address) {
    constexpr unsigned kEnabled = 0x80;
    return item({designation, onboardDeviceName(type & ~kEnabled),
                 (type & kEnabled) != 0 ? "enabled" : "disabled", address});
}

// Up to version 2.5: a list of pairs of type and designation.
std::vector<std::string> oldOnboardDevices(const Smbios& smbios) {
    std::vector<std::string> items;
    for (const SmbiosStructure* structure : smbios.ofType(kOldOnboard)) {
        for (std::size_t at = 4; at + 1 < structure->length(); at += 2) {
            const auto type = structure->byte(at);
            if (type) items.push_back(onboardItem(structure->string(at + 1), *type, ""));
        }
    }
    return items;
}

}  // namespace

std::vector<std::string> onboardDevices(const Smbios& smbios) {
    std::vector<std::string> items;
    for (const SmbiosStructure* device : smbios.ofType(kOnboard)) {
        const auto type = device->byte(0x05);
        if (type) items.push_back(onboardItem(device->string(0x04), *type, pciAddress(*device, 0x07)));
    }
    return items.empty() ? oldOnboardDevices(smbios) : items;
}

std::vector<std::string> slots(const Smbios& smbios) {
    std::vector<std::string> items;
    for (const SmbiosStructure* slot : smbios.ofType(kSlot)) {
        const auto code = [&](std::size_t offset) { return slot->byte(offset).value_or(0); };
        items.push_back(item({slot->string(0x04), slotTypeName(code(0x05)), slotUsageName(code(0x07)),
                              slotLengthName(code(0x08)), pciAddress(*slot, 0x0D)}));
    }
    return items;
}

std::vector<std::string> portConnectors(const Smbios& smbios) {
    std::vector<std::string> items;
    for (const SmbiosStructure* port : smbios.ofType(kPort)) {
        const std::string internal = cleanText(port->string(0x04));
        const std::string external = cleanText(port->string(0x06));
        const bool both = !internal.empty() && !external.empty();
        const std::string names = std::string(internal).append(both ? "/" : "").append(external);
        items.push_back(item({names, portTypeName(port->byte(0x08).value_or(0))}));
    }
    return items;
}

std::vector<std::string> powerSupplies(const Smbios& smbios) {
    constexpr unsigned kUnknownWatts = 0x8000;
    std::vector<std::string> items;
    for (const SmbiosStructure* supply : smbios.ofType(kPowerSupply)) {
        const auto watts = supply->word(0x0C);
        const bool known = watts && *watts != kUnknownWatts;
        items.push_back(item({supply->string(0x05), supply->string(0x07), supply->string(0x0A),
                              supply->string(0x08), known ? std::to_string(*watts) : ""}));
    }
    return items;
}

std::string ipmiSpecification(const SmbiosStructure& ipmi) {
    const auto revision = ipmi.byte(0x05);  // two decimal digits
    if (!revision) return "";
    return std::to_string(*revision >> 4U) + '.' + std::to_string(*revision & 0xFU);
}

std::string tpmSpecification(const SmbiosStructure& tpm) {
    const auto major = tpm.byte(0x08);
    const auto minor = tpm.byte(0x09);
    if (!major || !minor) return "";
    return std::to_string(*major) + '.' + std::to_string(*minor);
}

std::string_view chassisSku(const SmbiosStructure& chassis) {
    const auto count = chassis.byte(0x13);
    const auto size = chassis.byte(0x14);
    if (!count || !size) return {};
    return chassis.string(0x15U + std::size_t{*count} * *size);
}
