#pragma once

#include <string>
#include <vector>

class Machine;

// The name servers and search domains in use; machine.shared<Resolver>(). From /etc/resolv.conf, and where
// that names only systemd's stub on this machine, from the file that names what the stub asks.
class Resolver {
  public:
    explicit Resolver(Machine& machine);

    const std::vector<std::string>& servers() const { return servers_; }  // in the order of asking
    const std::vector<std::string>& search() const { return search_; }

  private:
    void parse(const std::string& text);

    std::vector<std::string> servers_, search_;
};
