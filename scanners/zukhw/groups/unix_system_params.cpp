// Group "UNIXSystemParams": one instance, the kernel's limits and settings.
#include <unistd.h>

#include <string>
#include <vector>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/cpu_counts.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/host_id.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/page_size.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

struct Setting {
    const char* field;
    const char* path;  // below /proc/sys
};

// The number at one place of a file that holds several.
std::optional<std::uint64_t> numberAt(const std::vector<std::string_view>& numbers, std::size_t place) {
    return place < numbers.size() ? parseDecimal(numbers[place]) : std::nullopt;
}

void writeSettings(Machine& machine, const std::vector<Setting>& settings, GroupWriter& out) {
    for (const Setting& setting : settings) {
        out.number(setting.field, machine.number(std::string("proc/sys/") + setting.path));
    }
}

void writeFiles(Machine& machine, GroupWriter& out) {
    writeSettings(machine, {{"MaxOpenFiles", "fs/file-max"}}, out);
    const std::string open = machine.text("proc/sys/fs/file-nr");
    out.number("OpenFiles", numberAt(words(open), 0));
    writeSettings(machine,
                  {{"MaxOpenFilesPerProcess", "fs/nr_open"},
                   {"MaxProcesses", "kernel/pid_max"},
                   {"MaxThreads", "kernel/threads-max"},
                   {"MaxUserWatches", "fs/inotify/max_user_watches"}},
                  out);
}

void writeInterprocess(Machine& machine, GroupWriter& out) {
    static constexpr const char* kSemaphores[] = {"SemaphoresPerSet", "SemaphoresTotal",
                                                  "SemaphoreOpsPerCall", "SemaphoreSets"};
    writeSettings(machine,
                  {{"SharedMemoryMaxBytes", "kernel/shmmax"},
                   {"SharedMemoryTotalPages", "kernel/shmall"},
                   {"SharedMemorySegments", "kernel/shmmni"}},
                  out);
    const std::string semaphores = machine.text("proc/sys/kernel/sem");
    for (std::size_t i = 0; i < std::size(kSemaphores); ++i) {
        out.number(kSemaphores[i], numberAt(words(semaphores), i));
    }
    writeSettings(machine,
                  {{"MessageMaxBytes", "kernel/msgmax"},
                   {"MessageQueueBytes", "kernel/msgmnb"},
                   {"MessageQueues", "kernel/msgmni"}},
                  out);
}

void writeMemoryAndDumps(Machine& machine, GroupWriter& out) {
    writeSettings(machine,
                  {{"Swappiness", "vm/swappiness"},
                   {"OvercommitMemory", "vm/overcommit_memory"},
                   {"OvercommitRatio", "vm/overcommit_ratio"},
                   {"DirtyRatio", "vm/dirty_ratio"},
                   {"HugePages", "vm/nr_hugepages"},
                   {"AddressSpaceRandomization", "kernel/randomize_va_space"},
                   {"CoreUsesPid", "kernel/core_uses_pid"}},
                  out);
    out.text("CorePattern", machine.text("proc/sys/kernel/core_pattern"));
}

// "Max open files            32768                32768                files"; a limit may be "unlimited".
void writeLimit(std::string_view limits, std::string_view title, const char* soft, const char* hard,
                GroupWriter& out) {
    for (const std::string_view line : lines(limits)) {
        if (!startsWith(line, title)) continue;
        const std::vector<std::string_view> fields = words(line.substr(title.size()));
        out.number(soft, numberAt(fields, 0));
        return out.number(hard, numberAt(fields, 1));
    }
}

}  // namespace

void collectUNIXSystemParams(Machine& machine, GroupWriter& out) {
    const CpuCounts& cpus = machine.shared<CpuCounts>();
    out.beginInstance();
    out.number("PageSizeBytes", machine.shared<PageSize>().bytes());
    if (machine.live()) out.number("ClockTicksPerSecond", ::sysconf(_SC_CLK_TCK));
    out.number("CpusConfigured", cpus.possible());
    out.number("CpusOnline", cpus.online());
    writeFiles(machine, out);
    writeInterprocess(machine, out);
    writeMemoryAndDumps(machine, out);
    const std::string limits = machine.text("proc/1/limits");
    writeLimit(limits, "Max open files ", "SoftNoFile", "HardNoFile", out);
    writeLimit(limits, "Max processes ", "SoftNProc", "HardNProc", out);
    out.text("DefaultShell", machine.link("bin/sh"));
    writeSettings(machine,
                  {{"Entropy", "kernel/random/entropy_avail"},
                   {"IPv4Forwarding", "net/ipv4/ip_forward"},
                   {"IPv6Forwarding", "net/ipv6/conf/all/forwarding"}},
                  out);
    out.text("HostId", machine.shared<HostId>().text());
}
