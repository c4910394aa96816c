#pragma once

#include <string>
#include <string_view>

class Machine;

// What an x86 processor says of the hypervisor that it runs under.
struct HypervisorSignature {
    bool present = false;  // whether there is one
    std::string text;      // "KVMKVMKVM"; empty when it cannot be asked
};

// The running machine is asked by CPUID; of a copy the text that was given with it is taken, when it is a
// known one, and the flag in /proc/cpuinfo.
HypervisorSignature readHypervisorSignature(Machine& machine);

// The hypervisor with this signature; empty when it is not known.
std::string_view hypervisorOfSignature(std::string_view signature);
