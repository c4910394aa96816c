#pragma once

#include <string>
#include <vector>

class GroupWriter;
class Machine;

// Memory modules on machines without SMBIOS, or for users who may not read it. Each of these writes one
// instance per module and tells whether it found any.
bool writeDeviceTreeModules(Machine& machine, GroupWriter& out);  // POWER
bool writeEdacModules(Machine& machine, GroupWriter& out);        // by the memory controller's driver
