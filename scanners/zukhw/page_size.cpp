#include "scanners/zukhw/page_size.h"

#include <unistd.h>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"

PageSize::PageSize(Machine& machine) {
    if (machine.live()) {
        bytes_ = static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
        return;
    }
    const std::string maps = machine.read("proc/self/smaps", Machine::kTable).value_or("");
    const auto value = findValue(maps, "KernelPageSize", ':');
    if (value) bytes_ = parseKibibytes(*value);
}
