#pragma once

#include <optional>
#include <string>

class Machine;

// The processor architecture by the kernel's name ("x86_64"), and how wide user space is;
// machine.shared<Architecture>().
class Architecture {
  public:
    explicit Architecture(Machine& machine);

    const std::string& name() const { return name_; }  // empty when unknown
    std::optional<unsigned> userBits() const { return userBits_; }
    // Whether numbers begin with their highest byte; as here when the name is unknown.
    bool bigEndian() const;

  private:
    std::string name_;
    std::optional<unsigned> userBits_;
};
