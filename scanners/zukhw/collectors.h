#pragma once

#include <string_view>
#include <vector>

class GroupWriter;
class Machine;

// Finds the instances of one group and writes them in their documented order. What cannot be found out is
// left out; nothing that a machine's files say is an error.
using Collect = void (*)(Machine&, GroupWriter&);

#define GROUP(name) void collect##name(Machine& machine, GroupWriter& out);
#include "scanners/zukhw/groups.def"
#undef GROUP

// One group of the catalogue.
struct Collector {
    std::string_view configName;  // "Operating System"
    std::string_view group;       // "OperatingSystem", the element's name
    Collect collect;              // null: the group does not exist on Linux
};

// All groups in the catalogue's order; lives as long as the program.
const std::vector<Collector>& allCollectors();
