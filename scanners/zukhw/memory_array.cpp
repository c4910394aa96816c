#include "scanners/zukhw/memory_array.h"

#include <algorithm>

#include "scanners/zukhw/smbios.h"

namespace {

constexpr unsigned kArray = 16;
constexpr unsigned kDevice = 17;
constexpr unsigned kUseSystemMemory = 3;

const SmbiosStructure* arrayOf(const SmbiosStructure& device,
                               const std::vector<const SmbiosStructure*>& arrays) {
    const auto owns = [&](const SmbiosStructure* array) { return device.word(0x04) == array->handle(); };
    const auto found = std::find_if(arrays.begin(), arrays.end(), owns);
    return found == arrays.end() ? nullptr : *found;
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
