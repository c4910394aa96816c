#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class Machine;

// Properties of the device tree, the firmware's description of machines without SMBIOS. Paths are relative to
// the tree's root: "model", "hypervisor/compatible".

// The first string of a property; empty when there is none.
std::string deviceTreeText(Machine& machine, std::string_view path);
// Whether a property, a list of strings, has this one.
bool deviceTreeLists(Machine& machine, std::string_view path, std::string_view text);
// A property of one cell.
std::optional<std::uint32_t> deviceTreeCell(Machine& machine, std::string_view path);

// Where the tree is: "proc/device-tree", which is a link on all but the oldest kernels, or its target; empty
// when this machine has none.
const std::string& deviceTreeRoot(Machine& machine);
