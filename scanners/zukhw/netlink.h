#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "scanners/zukhw/netlink_messages.h"

class Machine;

// What only the running kernel tells of its network, asked through rtnetlink without sending anything
// anywhere. Empty for a copied machine.

// machine.shared<NetlinkLinks>()
class NetlinkLinks {
  public:
    explicit NetlinkLinks(Machine& machine);

    // Null when there is no interface with this index.
    const NetlinkLink* find(std::uint64_t index) const;

  private:
    std::map<std::uint64_t, NetlinkLink> links_;
};

// All of them, in the order in which the kernel reports them.
std::vector<NetlinkAddress> readIpv4Addresses(Machine& machine);
