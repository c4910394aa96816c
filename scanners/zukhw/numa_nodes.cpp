#include "scanners/zukhw/numa_nodes.h"

#include <algorithm>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

NumaNodes::NumaNodes(Machine& machine) {
    const std::vector<std::string> names = machine.list("sys/devices/system/node");
    const auto isNode = [](const std::string& name) {
        return startsWith(name, "node") && parseDecimal(name.substr(4));
    };
    const auto nodes = std::count_if(names.begin(), names.end(), isNode);
    if (nodes != 0) count = static_cast<std::size_t>(nodes);
}
