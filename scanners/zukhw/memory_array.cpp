#include "scanners/zukhw/memory_array.h"

#include <algorithm>

#include "scanners/zukhw/smbios.h"

namespace {

constexpr unsigned kArray = 16;
constexpr unsigned kDevice = 17;
constexpr unsigned kMappedArray = 19;
constexpr unsigned kMappedDevice = 20;
constexpr unsigned kUseSystemMemory = 3;

const SmbiosStructure* arrayOf(const SmbiosStructure& device,
                               const std::vector<const SmbiosStructure*>& arrays) {
    const auto owns = [&](const SmbiosStructure* array) { return device.word(0x04) == array->handle(); };
    const auto found = std::find_if(arrays.begin(), arrays.end(), owns);
    return found == arrays.end() ? nullptr : *found;
}

// Kilobytes, both ends included; from 4 TiB on in fields of their own, in bytes.
std::optional<AddressRange> rangeOf(const SmbiosStructure& mapped, std::size_t extended) {
    constexpr std::uint32_t kSeeExtended = UINT32_MAX;
    const auto first = mapped.dword(0x04);
    const auto last = mapped.dword(0x08);
    if (!first || !last) return std::nullopt;
    AddressRange range{*first * std::uint64_t{1024}, *last * std::uint64_t{1024} + 1023};
    if (*first == kSeeExtended) {
        const auto largeFirst = mapped.qword(extended);
        const auto largeLast = mapped.qword(extended + 8);
        if (!largeFirst || !largeLast) return std::nullopt;
        range = {*largeFirst, *largeLast};
    }
    return range.first < range.last ? std::optional(range) : std::nullopt;
}

bool isOnlyModule(const Smbios& smbios, const SmbiosStructure& device) {
    const std::vector<const SmbiosStructure*> devices = smbios.ofType(kDevice);
    return std::count_if(devices.begin(), devices.end(), [&](const SmbiosStructure* other) {
               return other->word(0x04) == device.word(0x04) && other->word(0x0C).value_or(0) != 0;
           }) == 1;
}

bool isSystemMemory(const SmbiosStructure& array) {
    return array.byte(0x05) == kUseSystemMemory;
}

}  // namespace

std::optional<std::uint64_t> memoryDeviceBytes(const SmbiosStructure& device) {
    constexpr std::uint64_t kKilo = 1024;
    constexpr std::uint64_t kMega = 1024 * kKilo;
    const auto size = device.word(0x0C);
    if (!size || *size == 0xFFFF) return std::nullopt;
    if (*size == 0x7FFF) {
        // 32 GiB and more stand in a field of their own, which old firmware does not have.
        const auto extended = device.dword(0x1C);
        return extended ? std::optional((*extended & 0x7FFFFFFFU) * kMega) : std::nullopt;
    }
    const bool inKilobytes = (*size & 0x8000U) != 0;
    return (*size & 0x7FFFU) * (inKilobytes ? kKilo : kMega);
}

SystemMemory findSystemMemory(const Smbios& smbios) {
    const std::vector<const SmbiosStructure*> arrays = smbios.ofType(kArray);
    SystemMemory memory;
    for (const SmbiosStructure* array : arrays) {
        if (isSystemMemory(*array)) memory.arrays.push_back(array);
    }
    for (const SmbiosStructure* device : smbios.ofType(kDevice)) {
        // Some virtual machines' firmware names an array that there is not.
        const SmbiosStructure* array = arrayOf(*device, arrays);
        if (array == nullptr || isSystemMemory(*array)) memory.devices.push_back(device);
    }
    return memory;
}

const SmbiosStructure* memoryArrayOf(const Smbios& smbios, const SmbiosStructure& device) {
    return arrayOf(device, smbios.ofType(kArray));
}

std::optional<AddressRange> mappedRange(const Smbios& smbios, const SmbiosStructure& device) {
    for (const SmbiosStructure* mapped : smbios.ofType(kMappedDevice)) {
        if (mapped->word(0x0C) == device.handle()) return rangeOf(*mapped, 0x13);
    }
    if (!isOnlyModule(smbios, device)) return std::nullopt;
    for (const SmbiosStructure* mapped : smbios.ofType(kMappedArray)) {
        if (mapped->word(0x0C) == device.word(0x04)) return rangeOf(*mapped, 0x0F);
    }
    return std::nullopt;
}
