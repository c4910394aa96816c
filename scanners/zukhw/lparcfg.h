#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class Machine;

// /proc/ppc64/lparcfg, what a POWER partition is told of itself; machine.shared<Lparcfg>().
class Lparcfg {
  public:
    explicit Lparcfg(Machine& machine);

    bool available() const { return !text_.empty(); }
    // The value of "key=value"; empty when there is none.
    std::string_view value(std::string_view key) const;
    std::optional<std::uint64_t> number(std::string_view key) const;

  private:
    std::string text_;
};
