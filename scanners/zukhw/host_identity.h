#pragma once

#include <string>

class Machine;

// The names that a system's own files give it; machine.shared<HostIdentity>(). Empty when unknown.
struct HostIdentity {
    explicit HostIdentity(Machine& machine);

    std::string name;       // what the kernel goes by, else /etc/hostname
    std::string machineId;  // 32 hex digits
};
