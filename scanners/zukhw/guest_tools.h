#pragma once

#include <string>
#include <vector>

class Machine;

// The hypervisors' helpers that are installed or loaded, sorted: "open-vm-tools", "qemu-ga".
std::vector<std::string> installedGuestTools(Machine& machine);
