// Group "UnixCpuMeter": one instance, how busy the system is.
#include <string>
#include <vector>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/cpu_counts.h"
#include "scanners/zukhw/fraction.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/partition_files.h"
#include "scanners/zukhw/proc_stat.h"
#include "scanners/zukhw/text.h"

namespace {

// "8.97 9.71 8.49 16/188 15179": three loads, tasks that run of all tasks, the newest process.
void writeLoad(Machine& machine, GroupWriter& out) {
    constexpr std::size_t kFields = 5;
    const std::string text = machine.text("proc/loadavg");
    const std::vector<std::string_view> fields = words(text);
    if (fields.size() < kFields) return;
    out.text("Load1", decimalFraction(fields[0]));
    out.text("Load5", decimalFraction(fields[1]));
    out.text("Load15", decimalFraction(fields[2]));
    const std::vector<std::string_view> tasks = split(fields[3], '/');
    if (tasks.size() != 2) return;
    out.number("RunnableTasks", parseDecimal(tasks[0]));
    out.number("TotalTasks", parseDecimal(tasks[1]));
}

// Of the line "some avg10=99.15 avg60=97.59 avg300=97.80 total=2274484119" the first share.
void writePressure(Machine& machine, const char* field, const char* path, GroupWriter& out) {
    constexpr std::string_view kStart = "some avg10=";
    const std::string text = machine.text(path);
    if (!startsWith(text, kStart)) return;
    const std::string_view rest = std::string_view(text).substr(kStart.size());
    out.text(field, decimalFraction(rest.substr(0, rest.find(' '))));
}

// How much of its entitlement a POWER partition has used: processor time (purr) of the time that passed
// (tbr), against hundredths of processors.
void writePartition(Machine& machine, GroupWriter& out) {
    const LparConfig& config = machine.shared<LparConfig>();
    const auto used = parseDecimal(config.value("purr"));
    const auto passed = parseDecimal(config.value("tbr"));
    const auto entitled = parseDecimal(config.value("partition_entitled_capacity"));
    out.number("PowerVmPurr", used);
    if (!used || !passed || !entitled || *passed == 0 || *entitled == 0) return;
    constexpr double kPerProcessor = 100;
    constexpr double kLargest = 1e9;  // nothing sensible, and no longer exact
    const double processors = static_cast<double>(*used) / static_cast<double>(*passed);
    const double percent = 100 * processors * kPerProcessor / static_cast<double>(*entitled);
    if (percent < kLargest) out.text("EntitledUse", twoDecimals(percent));
}

}  // namespace

void collectUnixCpuMeter(Machine& machine, GroupWriter& out) {
    static constexpr std::pair<const char*, const char*> kCounters[] = {
        {"ContextSwitches", "ctxt"},           {"Interrupts", "intr"},
        {"ProcessesCreated", "processes"},     {"ProcessesRunning", "procs_running"},
        {"ProcessesBlocked", "procs_blocked"},
    };
    const ProcStat& stat = machine.shared<ProcStat>();
    out.beginInstance();
    writeLoad(machine, out);
    for (const auto& [field, key] : kCounters) out.number(field, stat.value(key));
    writePressure(machine, "CpuPressureAvg10", "proc/pressure/cpu", out);
    writePressure(machine, "MemoryPressureAvg10", "proc/pressure/memory", out);
    writePressure(machine, "IoPressureAvg10", "proc/pressure/io", out);
    out.number("CpusOnline", machine.shared<CpuCounts>().online());
    writePartition(machine, out);
}
