#pragma once

#include <map>
#include <string>
#include <string_view>

class Machine;

// What a Hyper-V host tells its guests of itself; machine.shared<HyperVPool>().
class HyperVPool {
  public:
    explicit HyperVPool(Machine& machine);

    // The value of "HostName", "PhysicalHostNameFullyQualified" and the like; empty when it was not told.
    std::string value(const std::string& key) const;

  private:
    void parse(Machine& machine, std::string_view data);

    std::map<std::string, std::string> values_;
};
