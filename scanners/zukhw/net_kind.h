#pragma once

#include <string>
#include <string_view>
#include <vector>

// What the kind of a network interface is told by.
struct NetKindClues {
    std::string deviceType;          // DEVTYPE of its uevent file
    std::string infoKind;            // IFLA_INFO_KIND, of the running machine only
    std::string hardwareType;        // the ARP type: "1" is Ethernet
    std::vector<std::string> files;  // the names in its directory
};

// Ethernet, WiFi, Wwan, Infiniband, Loopback, Bridge, Bond, Team, Vlan, Vxlan, Tun, Veth, Macvlan, WireGuard,
// Dummy, Ifb, Can or Other.
std::string_view netKind(const NetKindClues& clues);
