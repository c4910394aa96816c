#pragma once

#include <cstddef>
#include <optional>

class Machine;

// How many CPUs there are, for those who need no more than that; machine.shared<CpuCounts>().
class CpuCounts {
  public:
    explicit CpuCounts(Machine& machine);

    std::optional<std::size_t> possible() const { return possible_; }  // that the kernel is prepared for
    std::optional<std::size_t> online() const { return online_; }

  private:
    std::optional<std::size_t> possible_, online_;
};
