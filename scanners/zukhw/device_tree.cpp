#include "scanners/zukhw/device_tree.h"

#include <algorithm>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

namespace {

struct DeviceTreeRoot {
    explicit DeviceTreeRoot(Machine& machine) {
        for (const char* candidate : {"sys/firmware/devicetree/base", "proc/device-tree"}) {
            if (path.empty() && machine.exists(candidate)) path = candidate;
        }
    }
    std::string path;
};

std::string readProperty(Machine& machine, std::string_view path) {
    const std::string& root = deviceTreeRoot(machine);
    if (root.empty()) return "";
    return machine.read(root + '/' + std::string(path)).value_or("");
}

}  // namespace

const std::string& deviceTreeRoot(Machine& machine) {
    return machine.shared<DeviceTreeRoot>().path;
}

std::string deviceTreeText(Machine& machine, std::string_view path) {
    const std::string property = readProperty(machine, path);
    return std::string(trim(property.substr(0, property.find('\0'))));
}

bool deviceTreeLists(Machine& machine, std::string_view path, std::string_view text) {
    const std::string property = readProperty(machine, path);
    const std::vector<std::string_view> texts = split(property, '\0');
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

std::optional<std::uint32_t> deviceTreeCell(Machine& machine, std::string_view path) {
    const std::string property = readProperty(machine, path);
    if (property.size() != 4) return std::nullopt;
    std::uint32_t value = 0;
    for (const char byte : property) value = value << 8 | static_cast<unsigned char>(byte);
    return value;
}
