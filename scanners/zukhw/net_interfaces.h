#pragma once

#include <cstdint>
#include <string>
#include <vector>

class Machine;

struct NetInterface {
    std::string name;
    std::uint64_t index = 0;
    std::string macAddress;  // "02:00:00:00:00:01"; 20 bytes of InfiniBand; empty when it has none
};

// The network interfaces in order of index; machine.shared<NetInterfaces>().
class NetInterfaces {
  public:
    explicit NetInterfaces(Machine& machine);

    const std::vector<NetInterface>& all() const { return interfaces_; }
    // Null when there is none.
    const NetInterface* byIndex(std::uint64_t index) const;
    const NetInterface* byName(const std::string& name) const;

  private:
    std::vector<NetInterface> interfaces_;
};

// A hardware address as it is reported: lower case; empty unless it has 6 or 20 bytes and not all are zero.
std::string cleanMacAddress(const std::string& text);
