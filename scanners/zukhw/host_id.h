#pragma once

#include <string>

class Machine;

// The number in /etc/hostid; machine.shared<HostId>().
class HostId {
  public:
    explicit HostId(Machine& machine);

    // Eight hex digits; empty when no number was set.
    const std::string& text() const { return text_; }

  private:
    std::string text_;
};
