#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

class Machine;

// The NUMA nodes; machine.shared<NumaNodes>().
struct NumaNodes {
    explicit NumaNodes(Machine& machine);

    // No value on kernels without NUMA.
    std::optional<std::size_t> count() const;

    std::vector<std::string> names;  // "node0", in natural order
};
