#pragma once

#include <cstdint>
#include <optional>

class Machine;

// The size of a page of memory, in bytes; machine.shared<PageSize>().
class PageSize {
  public:
    explicit PageSize(Machine& machine);

    std::optional<std::uint64_t> bytes() const { return bytes_; }

  private:
    std::optional<std::uint64_t> bytes_;
};
