#include "scanners/zukhw/numa_nodes.h"

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

NumaNodes::NumaNodes(Machine& machine) {
    for (const std::string& name : machine.list("sys/devices/system/node")) {
        if (startsWith(name, "node") && parseDecimal(name.substr(4))) names.push_back(name);
    }
}

std::optional<std::size_t> NumaNodes::count() const {
    return names.empty() ? std::nullopt : std::optional(names.size());
}
