#pragma once

#include <cstddef>
#include <optional>

class Machine;

// How many NUMA nodes there are; machine.shared<NumaNodes>(). No value on kernels without NUMA.
struct NumaNodes {
    explicit NumaNodes(Machine& machine);

    std::optional<std::size_t> count;
};
