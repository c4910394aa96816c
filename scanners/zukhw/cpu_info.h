#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class Machine;

struct CpuAddressBits {
    std::optional<std::uint64_t> physical, virtualBits;
};

// /proc/cpuinfo, whose form every architecture has chosen for itself: a block of "key : value" lines for each
// online CPU, and lines for all of them before, between or after these; machine.shared<CpuInfo>().
class CpuInfo {
  public:
    explicit CpuInfo(Machine& machine);
    CpuInfo(const CpuInfo&) = delete;  // the blocks point into the text
    CpuInfo& operator=(const CpuInfo&) = delete;

    // The value of the first of these keys that the CPU's own block has, or else the lines for all CPUs;
    // empty when none has one. A CPU without a block (an offline one) has only the latter.
    std::string_view value(unsigned cpu, std::initializer_list<std::string_view> keys) const;

    // How wide addresses are; no values on other architectures than x86 and LoongArch.
    CpuAddressBits addressBits(unsigned cpu) const;

    // The CPUs that have a block, in order.
    std::vector<unsigned> cpus() const;

  private:
    void addBlock(std::string_view block);

    std::string text_;
    std::map<unsigned, std::string_view> blocks_;
    std::vector<std::string_view> common_;
};
