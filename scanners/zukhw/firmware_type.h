#pragma once

#include <string_view>

class Machine;

// What started the system: "UEFI", "DeviceTree" or "BIOS"; empty when nothing tells.
std::string_view firmwareType(Machine& machine);
