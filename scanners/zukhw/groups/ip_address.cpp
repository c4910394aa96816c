// Group "IPAddress": one instance per IPv4 address, by the interface's index, then as the kernel reports
// them.
#include <endian.h>
#include <linux/if_addr.h>
#include <linux/rtnetlink.h>

#include <algorithm>
#include <string>
#include <vector>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/ipv4.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/net_interfaces.h"
#include "scanners/zukhw/netlink.h"
#include "scanners/zukhw/resolver.h"

namespace {

// An address as it is reported; numbers in host order.
struct Address {
    std::uint64_t interfaceIndex = UINT64_MAX;  // the largest when unknown: those come last
    std::string interface;
    std::uint32_t address = 0;
    std::optional<unsigned> prefixLength;
    std::optional<std::uint32_t> broadcast, peer;
    const char* scope = "";
    std::string label;
    std::optional<bool> secondary, dynamic;
};

const char* scopeName(unsigned scope) {
    switch (scope) {
        case RT_SCOPE_UNIVERSE:
            return "global";
        case RT_SCOPE_SITE:
            return "site";
        case RT_SCOPE_LINK:
            return "link";
        case RT_SCOPE_HOST:
            return "host";
        default:
            return "";
    }
}

std::vector<Address> liveAddresses(Machine& machine) {
    std::vector<Address> addresses;
    for (const NetlinkAddress& from : readIpv4Addresses(machine)) {
        if (from.prefixLength > 32) continue;
        Address address;
        const NetInterface* interface = machine.shared<NetInterfaces>().byIndex(from.interfaceIndex);
        address.interfaceIndex = from.interfaceIndex;
        if (interface != nullptr) address.interface = interface->name;
        address.address = be32toh(from.local);
        address.prefixLength = from.prefixLength;
        if (from.broadcast) address.broadcast = be32toh(*from.broadcast);
        if (from.peer && *from.peer != from.local) address.peer = be32toh(*from.peer);
        address.scope = scopeName(from.scope);
        address.label = from.label;
        address.secondary = (from.flags & IFA_F_SECONDARY) != 0;
        address.dynamic = (from.flags & IFA_F_PERMANENT) == 0;
        addresses.push_back(std::move(address));
    }
    return addresses;
}

// The route to the network that the address lies in: the one with the longest mask and without a gateway.
const Ipv4Route* networkOf(const std::vector<Ipv4Route>& routes, std::uint32_t address) {
    const Ipv4Route* best = nullptr;
    for (const Ipv4Route& route : routes) {
        const bool holds =
            route.mask != 0 && (address & route.mask) == route.destination && !route.hasGateway;
        if (holds && (best == nullptr || route.mask > best->mask)) best = &route;
    }
    return best;
}

// What the files of a copy tell: addresses without their interface, and routes with it.
std::vector<Address> copiedAddresses(Machine& machine) {
    constexpr std::uint32_t kLoopback = 127;
    std::vector<Address> addresses;
    const std::string trie = machine.read("proc/net/fib_trie", Machine::kTable).value_or("");
    for (const LocalAddress& local : parseFibTrie(trie)) {
        if (local.length != 32) continue;
        Address address;
        address.address = local.address;
        const Ipv4Route* route = networkOf(machine.shared<Ipv4Routes>().all(), local.address);
        if (route != nullptr) {
            address.interface = route->interface;
            address.prefixLength = static_cast<unsigned>(__builtin_popcount(route->mask));
        } else if (local.address >> 24 == kLoopback) {
            address.interface = "lo";
        }
        const NetInterface* interface = machine.shared<NetInterfaces>().byName(address.interface);
        if (interface != nullptr) address.interfaceIndex = interface->index;
        addresses.push_back(std::move(address));
    }
    return addresses;
}

void writeAddress(const Address& address, GroupWriter& out) {
    out.text("InterfaceName", address.interface);
    out.text("Address", ipv4Text(address.address));
    if (address.prefixLength) {
        const std::uint32_t mask = ipv4Mask(*address.prefixLength);
        // Of a point-to-point link the network is the other end's.
        const std::uint32_t network = address.peer.value_or(address.address) & mask;
        out.number("PrefixLength", *address.prefixLength);
        out.text("SubnetMask", ipv4Text(mask));
        out.text("Network", ipv4Text(network));
    }
    if (address.broadcast) out.text("Broadcast", ipv4Text(*address.broadcast));
    if (address.peer) out.text("PeerAddress", ipv4Text(*address.peer));
    out.text("Scope", address.scope);
    out.text("Label", address.label);
    out.boolean("Secondary", address.secondary);
    out.boolean("Dynamic", address.dynamic);
}

void writeSurroundings(Machine& machine, const Address& address, GroupWriter& out) {
    const Resolver& resolver = machine.shared<Resolver>();
    const NetInterface* interface = machine.shared<NetInterfaces>().byName(address.interface);
    out.list("Gateway", machine.shared<Ipv4Routes>().gatewaysOf(address.interface));
    if (interface != nullptr) out.text("MacAddress", interface->macAddress);
    out.list("DnsServers", resolver.servers());
    out.list("DnsSearch", resolver.search());
}

}  // namespace

void collectIPAddress(Machine& machine, GroupWriter& out) {
    std::vector<Address> addresses = machine.live() ? liveAddresses(machine) : copiedAddresses(machine);
    std::stable_sort(addresses.begin(), addresses.end(),
                     [](const Address& a, const Address& b) { return a.interfaceIndex < b.interfaceIndex; });
    for (const Address& address : addresses) {
        out.beginInstance();
        writeAddress(address, out);
        writeSurroundings(machine, address, out);
    }
}
