#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class Machine;

// IPv4 addresses are numbers in host order here: 192.168.0.1 is 0xC0A80001.
std::string ipv4Text(std::uint32_t address);
// 0xFFFFFF00 of 24; `length` at most 32.
std::uint32_t ipv4Mask(unsigned length);

// A line of /proc/net/route.
struct Ipv4Route {
    std::string interface;
    std::uint32_t destination = 0, gateway = 0, mask = 0;
    std::uint64_t metric = 0;
    bool isUp = false, hasGateway = false;
};

// The main routing table in the file's order; machine.shared<Ipv4Routes>().
class Ipv4Routes {
  public:
    explicit Ipv4Routes(Machine& machine);

    const std::vector<Ipv4Route>& all() const { return routes_; }
    // The gateways of the interface's default routes with the lowest metric.
    std::vector<std::string> gatewaysOf(std::string_view interface) const;

  private:
    std::vector<Ipv4Route> routes_;
};

// The machine's own addresses with the length of their entry, of the local table in /proc/net/fib_trie: all
// that a copied machine's files tell of its addresses.
struct LocalAddress {
    std::uint32_t address;
    unsigned length;  // 32 for most; 8 where a whole network is local
};
std::vector<LocalAddress> parseFibTrie(std::string_view text);
