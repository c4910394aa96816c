#include "scanners/zukhw/block_devices.h"

#include <algorithm>
#include <map>
#include <set>

#include "scanners/zukhw/device_path.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kNumbers[] = "sys/dev/block/";
constexpr char kDisks[] = "sys/block/";
constexpr std::string_view kNodes = "/dev/";
constexpr std::string_view kMapper = "/dev/mapper/";

// The kernel's own number for the mapping's name.
std::string mappedBlock(Machine& machine, std::string_view name) {
    for (const std::string& block : machine.list("sys/block")) {
        if (startsWith(block, "dm-") && machine.text(kDisks + block + "/dm/name") == name) return block;
    }
    return "";
}

std::vector<std::string> readNames(Machine& machine) {
    std::vector<std::string> names = machine.list("sys/class/block");
    if (!names.empty()) return names;
    // Copies may lack the class; the numbers lead to partitions as well.
    std::set<std::string> found;
    for (const std::string& disk : machine.list("sys/block")) found.insert(disk);
    for (const std::string& number : machine.list("sys/dev/block"))
        found.insert(blockNameOf(machine, number));
    names.assign(found.begin(), found.end());
    naturalSort(&names);
    return names;
}

std::string findPath(Machine& machine, const std::string& name) {
    if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos) return "";
    std::string path = machine.resolve("sys/class/block/" + name);
    if (!path.empty()) return path;
    path = machine.resolve(kDisks + name);
    if (!path.empty()) return path;
    // Copies may lack the class, which lists partitions as well: look into the disks that the name begins
    // with.
    for (const std::string& candidate : machine.list("sys/block")) {
        if (!startsWith(name, candidate)) continue;
        path = machine.resolve(std::string(kDisks).append(candidate).append("/").append(name));
        if (!path.empty()) return path;
    }
    return "";
}

std::vector<std::string> findParents(Machine& machine, const std::string& name) {
    const std::string path = blockPath(machine, name);
    if (path.empty()) return {};
    if (isPartition(machine, name)) return {std::string(baseName(parentPath(path)))};
    return machine.list(path + "/slaves");
}

struct Names {
    explicit Names(Machine& machine) : all(readNames(machine)) {}

    std::vector<std::string> all;
};

// What was found by a device's name: several groups ask for the same, and layers have layers in common.
struct Known {
    explicit Known(Machine&) {}

    std::map<std::string, std::string> paths;
    std::map<std::string, bool> partitions;
    std::map<std::string, std::vector<std::string>> parents;
};

template <typename Value, typename Find>
Value remembered(std::map<std::string, Value>* known, const std::string& name, Find find) {
    const auto place = known->find(name);
    return place != known->end() ? place->second : known->emplace(name, find()).first->second;
}

}  // namespace

std::vector<std::string> blockNames(Machine& machine) {
    return machine.shared<Names>().all;
}

std::string blockNameOf(Machine& machine, const std::string& device) {
    return machine.linkName(kNumbers + device);
}

std::string blockNameOfNode(Machine& machine, std::string_view node) {
    if (startsWith(node, kMapper)) return mappedBlock(machine, node.substr(kMapper.size()));
    if (!startsWith(node, kNodes)) return "";
    std::string name(node.substr(kNodes.size()));
    std::replace(name.begin(), name.end(), '/', '!');  // cciss/c0d0 is a name with a slash to devices only
    return blockPath(machine, name).empty() ? "" : name;
}

std::string blockPath(Machine& machine, const std::string& name) {
    return remembered(&machine.shared<Known>().paths, name, [&] { return findPath(machine, name); });
}

bool isPartition(Machine& machine, const std::string& name) {
    const std::string path = blockPath(machine, name);
    return !path.empty() && remembered(&machine.shared<Known>().partitions, name,
                                       [&] { return machine.exists(path + "/partition"); });
}

std::vector<std::string> blockParents(Machine& machine, const std::string& name) {
    return remembered(&machine.shared<Known>().parents, name, [&] { return findParents(machine, name); });
}

std::vector<std::string> blockLayers(Machine& machine, const std::string& name) {
    std::vector<std::string> layers;
    if (!name.empty()) layers.push_back(name);
    for (std::size_t i = 0; i < layers.size(); ++i) {  // grows as it goes
        for (const std::string& parent : blockParents(machine, layers[i])) {
            if (std::find(layers.begin(), layers.end(), parent) == layers.end()) layers.push_back(parent);
        }
    }
    return layers;
}

std::vector<std::string> disksBelow(Machine& machine, const std::string& name) {
    std::vector<std::string> disks;
    for (const std::string& layer : blockLayers(machine, name)) {
        if (blockParents(machine, layer).empty()) disks.push_back(layer);
    }
    naturalSort(&disks);
    return disks;
}

bool isEncrypted(Machine& machine, const std::string& name) {
    const std::vector<std::string> layers = blockLayers(machine, name);
    return std::any_of(layers.begin(), layers.end(), [&](const std::string& layer) {
        return startsWith(machine.text(kDisks + layer + "/dm/uuid"), "CRYPT-");
    });
}
