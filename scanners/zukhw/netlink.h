#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

class Machine;

// What only the running kernel tells of its network, asked through rtnetlink without sending anything
// anywhere. Empty for a copied machine.

// machine.shared<NetlinkLinks>()
class NetlinkLinks {
  public:
    struct Link {
        std::string infoKind;          // "veth", "dummy"; empty for most physical ones
        std::string permanentAddress;  // its bytes
    };

    explicit NetlinkLinks(Machine& machine);

    // Null when there is no interface with this index.
    const Link* find(std::uint64_t index) const;

  private:
    std::map<std::uint64_t, Link> links_;
};

// An IPv4 address of an interface; addresses in network byte order.
struct NetlinkAddress {
    std::uint64_t interfaceIndex = 0;
    unsigned prefixLength = 0;
    unsigned scope = 0;  // RT_SCOPE_*
    std::uint32_t flags = 0;
    std::uint32_t local = 0;
    std::optional<std::uint32_t> peer, broadcast;
    std::string label;
};

// All of them, in the order in which the kernel reports them.
std::vector<NetlinkAddress> readIpv4Addresses(Machine& machine);
