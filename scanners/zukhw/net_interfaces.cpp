#include "scanners/zukhw/net_interfaces.h"

#include <algorithm>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

NetInterfaces::NetInterfaces(Machine& machine) {
    const std::string directory = "sys/class/net";
    const std::string start = directory + '/';
    for (const std::string& name : machine.list(directory)) {
        const std::string path = start + name;
        const auto index = machine.number(path + "/ifindex");
        if (!index) continue;  // bonding_masters is a file among the interfaces
        interfaces_.push_back({name, *index, cleanMacAddress(machine.text(path + "/address"))});
    }
    std::stable_sort(interfaces_.begin(), interfaces_.end(),
                     [](const NetInterface& a, const NetInterface& b) { return a.index < b.index; });
}

const NetInterface* NetInterfaces::byIndex(std::uint64_t index) const {
    for (const NetInterface& interface : interfaces_) {
        if (interface.index == index) return &interface;
    }
    return nullptr;
}

const NetInterface* NetInterfaces::byName(const std::string& name) const {
    for (const NetInterface& interface : interfaces_) {
        if (interface.name == name) return &interface;
    }
    return nullptr;
}

std::string cleanMacAddress(const std::string& text) {
    constexpr std::size_t kEthernet = 6 * 3 - 1;
    constexpr std::size_t kInfiniband = 20 * 3 - 1;
    const std::string address = toLower(trim(text));
    if (address.size() != kEthernet && address.size() != kInfiniband) return "";
    for (std::size_t i = 0; i < address.size(); ++i) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        const bool good = i % 3 == 2 ? address[i] == ':' : kDigits.find(address[i]) != std::string_view::npos;
        if (!good) return "";
    }
    return address.find_first_not_of("0:") == std::string::npos ? "" : address;
}
