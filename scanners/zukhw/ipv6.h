#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class Machine;

using Ipv6Bytes = std::array<unsigned char, 16>;  // in network order

// "fe80::1": the shortest form, lower case.
std::string ipv6Text(const Ipv6Bytes& address);

// 32 hex digits, as the kernel's tables have it.
std::optional<Ipv6Bytes> parseIpv6Hex(std::string_view hex);

// The default routes of /proc/net/ipv6_route; machine.shared<Ipv6Gateways>().
class Ipv6Gateways {
  public:
    explicit Ipv6Gateways(Machine& machine);

    // Those of the interface with the lowest metric, in the table's order.
    std::vector<std::string> of(std::string_view interface) const;

  private:
    struct Gateway {
        std::string interface;
        std::uint64_t metric = 0;
        Ipv6Bytes address{};
    };

    std::vector<Gateway> gateways_;
};
