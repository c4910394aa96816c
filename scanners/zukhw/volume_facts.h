#pragma once

#include <string>
#include <vector>

class Machine;

// What the groups of partitions and of volumes tell alike of a block device.
struct VolumeFacts {
    // name: in /sys/class/block; path: its directory free of links.
    VolumeFacts(Machine& machine, const std::string& name, const std::string& path);

    std::string udevName;  // in the udev database
    std::string fileSystem, label, uuid;
    std::vector<std::string> mountPoints;  // in the order of mounting
    bool isSwap = false;                   // in use as such
};
