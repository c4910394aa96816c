#pragma once

#include <optional>
#include <string>
#include <vector>

class Machine;

// The machine level that a system runs on: a virtual machine, a partition, or the hypervisor's own control
// system; machine.shared<Hypervisor>().
struct Hypervisor {
    enum class Kind { None, Machine, Partition };

    explicit Hypervisor(Machine& machine);

    Kind kind = Kind::None;
    std::string name;  // "KVM"; empty when only its presence shows
    std::string version;
    std::string signature;  // as CPUID gives it
    bool host = false;      // this system controls the hypervisor, and sees the machine as it is
    std::optional<bool> paravirtualized;
    std::vector<std::string> evidence;  // names of the sources that agree

    bool isGuest() const { return kind != Kind::None && !host; }
    // Whether there was a source that would have told of a hypervisor.
    bool known = false;
};
