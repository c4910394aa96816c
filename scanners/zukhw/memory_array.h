#pragma once

#include <cstdint>
#include <optional>
#include <vector>

class SmbiosStructure;
class Smbios;

// The size of a memory device (type 17) in bytes: 0 for an empty slot, no value when the firmware does not
// know.
std::optional<std::uint64_t> memoryDeviceBytes(const SmbiosStructure& device);

// The arrays (type 16) of slots for the system's main memory, and the devices (type 17) that belong to them.
struct SystemMemory {
    std::vector<const SmbiosStructure*> arrays;
    std::vector<const SmbiosStructure*> devices;
};
SystemMemory findSystemMemory(const Smbios& smbios);

// The array that a device names; null when there is none of that handle.
const SmbiosStructure* memoryArrayOf(const Smbios& smbios, const SmbiosStructure& device);

// The physical addresses in bytes that a device (type 20), or its array (type 19) when it is the only module
// there, is mapped to.
struct AddressRange {
    std::uint64_t first = 0;
    std::uint64_t last = 0;
};
std::optional<AddressRange> mappedRange(const Smbios& smbios, const SmbiosStructure& device);
