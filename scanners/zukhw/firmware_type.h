#pragma once

#include <string_view>

class Machine;

// What started the system; machine.shared<FirmwareType>().
struct FirmwareType {
    explicit FirmwareType(Machine& machine);

    std::string_view name;  // "UEFI", "DeviceTree" or "BIOS"; empty when nothing tells
};
