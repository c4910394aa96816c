#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class Machine;

// /proc/meminfo; machine.shared<Meminfo>().
class Meminfo {
  public:
    explicit Meminfo(Machine& machine);

    // The amount after "MemTotal:" and the like, in bytes.
    std::optional<std::uint64_t> bytes(std::string_view key) const;
    // A line without a unit, as "HugePages_Total:".
    std::optional<std::uint64_t> count(std::string_view key) const;

  private:
    std::string text_;
};
