#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What the kernel's answers to rtnetlink requests hold. Every length in them is checked against the bytes
// that there are.

struct NetlinkLink {
    std::string infoKind;          // "veth", "dummy"; empty for most physical ones
    std::string permanentAddress;  // its bytes
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

// Add what one datagram of the answer tells, links by the interface's index. True when there is no more to
// come.
bool addNetlinkLinks(std::string_view datagram, std::map<std::uint64_t, NetlinkLink>* links);
bool addNetlinkAddresses(std::string_view datagram, std::vector<NetlinkAddress>* addresses);
