#pragma once

#include <string>
#include <vector>

class Machine;

// What /proc/swaps lists, devices and files; machine.shared<Swaps>().
class Swaps {
  public:
    explicit Swaps(Machine& machine);

    // Paths, sorted.
    const std::vector<std::string>& paths() const { return paths_; }
    // Whether the block device with this name ("dm-1") is among them.
    bool contains(const std::string& block) const;

  private:
    std::vector<std::string> paths_, blocks_;
};
