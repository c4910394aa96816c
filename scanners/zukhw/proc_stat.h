#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class Machine;

// /proc/stat: what the kernel has counted since it started; machine.shared<ProcStat>().
class ProcStat {
  public:
    // The time that a CPU has spent, in clock ticks, by kind: user, nice, system, idle, iowait, irq, softirq,
    // steal, guest. Older kernels know fewer kinds.
    struct CpuTimes {
        std::string name;  // "0", or "total" for all CPUs
        std::vector<std::uint64_t> ticks;
    };

    explicit ProcStat(Machine& machine);

    // All CPUs together, then each that is online, in order.
    const std::vector<CpuTimes>& cpus() const { return cpus_; }

    // The first number of the line with this key ("ctxt", "btime"); no value when there is none.
    std::optional<std::uint64_t> value(std::string_view key) const;

  private:
    std::string text_;
    std::vector<CpuTimes> cpus_;
};
