#pragma once

#include <cstdint>
#include <optional>
#include <string>

class Machine;

// What a logical CPU is. Empty and without value where its architecture does not tell.
struct CpuIdentity {
    std::string manufacturer;
    std::string model;
    std::optional<std::uint64_t> family, modelNumber;
    std::string stepping;  // decimal; on ARM "r1p2"
};

CpuIdentity identifyCpu(Machine& machine, unsigned cpu);
