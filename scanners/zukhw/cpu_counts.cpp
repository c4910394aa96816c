#include "scanners/zukhw/cpu_counts.h"

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"

namespace {

std::optional<std::size_t> countOf(Machine& machine, const char* path) {
    const auto cpus = parseCpuList(machine.text(path));
    if (!cpus || cpus->empty()) return std::nullopt;
    return cpus->size();
}

}  // namespace

CpuCounts::CpuCounts(Machine& machine)
    : possible_(countOf(machine, "sys/devices/system/cpu/possible")),
      online_(countOf(machine, "sys/devices/system/cpu/online")) {}
