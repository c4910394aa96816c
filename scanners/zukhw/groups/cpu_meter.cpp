// Group "CpuMeter": what the CPUs have spent their time on since the machine started, all together first,
// then one instance per CPU that is online.
#include <unistd.h>

#include <algorithm>
#include <numeric>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/fraction.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/proc_stat.h"

namespace {

// In the order of the kernel's numbers.
constexpr const char* kFields[] = {"UserMilliseconds",    "NiceMilliseconds",   "SystemMilliseconds",
                                   "IdleMilliseconds",    "IowaitMilliseconds", "IrqMilliseconds",
                                   "SoftirqMilliseconds", "StealMilliseconds",  "GuestMilliseconds"};
constexpr std::size_t kIdle = 3;
constexpr std::size_t kIowait = 4;
constexpr std::size_t kGuest = 8;  // counted once more inside user

std::uint64_t ticksPerSecond(const Machine& machine) {
    constexpr std::uint64_t kUsual = 100;
    const long live = machine.live() ? ::sysconf(_SC_CLK_TCK) : 0;
    return live > 0 ? static_cast<std::uint64_t>(live) : kUsual;
}

void writeBusy(const std::vector<std::uint64_t>& ticks, GroupWriter& out) {
    if (ticks.size() <= kIdle) return;
    const auto end = ticks.begin() + static_cast<std::ptrdiff_t>(std::min(ticks.size(), kGuest));
    const double all = std::accumulate(ticks.begin(), end, 0.0);
    double idle = static_cast<double>(ticks[kIdle]);
    if (ticks.size() > kIowait) idle += static_cast<double>(ticks[kIowait]);
    if (all > 0) out.text("BusyPercent", twoDecimals(100 * (all - idle) / all));
}

}  // namespace

void collectCpuMeter(Machine& machine, GroupWriter& out) {
    constexpr std::uint64_t kMilliseconds = 1000;
    const std::uint64_t perSecond = ticksPerSecond(machine);
    for (const ProcStat::CpuTimes& cpu : machine.shared<ProcStat>().cpus()) {
        out.beginInstance();
        out.text("Cpu", cpu.name);
        for (std::size_t i = 0; i < std::size(kFields) && i < cpu.ticks.size(); ++i) {
            if (cpu.ticks[i] > UINT64_MAX / kMilliseconds) continue;
            out.number(kFields[i], cpu.ticks[i] * kMilliseconds / perSecond);
        }
        writeBusy(cpu.ticks, out);
    }
}
