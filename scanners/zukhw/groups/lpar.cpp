// Group "Lpar": one instance when this system is a partition of a POWER or s390 machine.
#include <string>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/device_tree.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/partition_files.h"
#include "scanners/zukhw/text.h"

namespace {

// A field and the key that it comes from.
struct Row {
    const char* field;
    const char* key;
};

std::optional<bool> asFlag(std::string_view text) {
    const auto number = parseDecimal(text);
    return number ? std::optional(*number != 0) : std::nullopt;
}

// The property is named after the maker: "xyz,partition-name".
std::string partitionName(Machine& machine) {
    const std::string& root = deviceTreeRoot(machine);
    if (root.empty()) return "";
    for (const std::string& property : machine.list(root)) {
        if (endsWith(property, ",partition-name")) return deviceTreeText(machine, property);
    }
    return "";
}

void writeMegabytes(const char* field, std::string_view text, GroupWriter& out) {
    constexpr std::uint64_t kMega = 1024 * 1024;
    const auto megabytes = parseDecimal(text);
    if (megabytes && *megabytes <= UINT64_MAX / kMega) out.number(field, *megabytes * kMega);
}

std::optional<std::size_t> threadsPerCore(Machine& machine) {
    const auto threads =
        parseCpuList(machine.text("sys/devices/system/cpu/cpu0/topology/thread_siblings_list"));
    return threads && !threads->empty() ? std::optional(threads->size()) : std::nullopt;
}

void writePower(Machine& machine, const LparConfig& config, GroupWriter& out) {
    static constexpr Row kProcessors[] = {
        {"EntitledCapacity", "partition_entitled_capacity"},
        {"MinimumEntitledCapacity", "MinEntCap"},
        {"MaximumEntitledCapacity", "partition_max_entitled_capacity"},
        {"ActiveProcessors", "partition_active_processors"},
        {"PotentialProcessors", "partition_potential_processors"},
        {"MinimumProcessors", "MinProcs"},
        {"DesiredProcessors", "DesProcs"},
        {"SystemActiveProcessors", "system_active_processors"},
        {"SystemPotentialProcessors", "system_potential_processors"},
        {"PoolId", "pool"},
        {"PoolCapacity", "pool_capacity"},
        {"PoolProcessors", "pool_num_procs"},
        {"CapacityWeight", "capacity_weight"},
    };
    out.beginInstance();
    out.number("PartitionId", parseDecimal(config.value("partition_id")));
    out.text("PartitionName", partitionName(machine));
    out.text("SystemType", config.value("system_type"));
    out.hardware("SystemSerialNumber", config.value("serial_number"));
    out.boolean("SharedProcessorMode", asFlag(config.value("shared_processor_mode")));
    out.boolean("Capped", asFlag(config.value("capped")));
    for (const Row& row : kProcessors) out.number(row.field, parseDecimal(config.value(row.key)));
    writeMegabytes("MinimumMemoryBytes", config.value("MinMem"), out);
    writeMegabytes("DesiredMemoryBytes", config.value("DesMem"), out);
    out.number("EntitledMemoryBytes", parseDecimal(config.value("entitled_memory")));
    out.number("Smt", threadsPerCore(machine));
    out.text("Kind", "PowerLpar");
}

void writeS390(const SysInfo& info, GroupWriter& out) {
    static constexpr Row kProcessors[] = {
        {"ActiveProcessors", "LPAR CPUs Configured"},   {"PotentialProcessors", "LPAR CPUs Total"},
        {"DedicatedProcessors", "LPAR CPUs Dedicated"}, {"SharedProcessors", "LPAR CPUs Shared"},
        {"ReservedProcessors", "LPAR CPUs Reserved"},   {"Adjustment", "LPAR Adjustment"},
    };
    out.beginInstance();
    out.number("PartitionId", parseDecimal(info.value("LPAR Number")));
    out.text("PartitionName", info.value("LPAR Name"));
    out.text("Characteristics", info.value("LPAR Characteristics"));
    for (const Row& row : kProcessors) out.number(row.field, parseDecimal(info.value(row.key)));
    out.text("MachineType", info.value("Type"));
    const std::vector<std::string_view> model = words(info.value("Model"));
    if (!model.empty()) out.text("MachineModel", model[0]);
    out.hardware("SystemSerialNumber", info.value("Sequence Code"));
    out.number("CpcProcessors", parseDecimal(info.value("CPUs Total")));
    out.text("Capability", info.value("Capability"));
    out.text("Kind", "S390Lpar");
}

}  // namespace

void collectLpar(Machine& machine, GroupWriter& out) {
    const LparConfig& config = machine.shared<LparConfig>();
    const SysInfo& info = machine.shared<SysInfo>();
    // Emulated POWER machines have the file, too, and are no partition of anything.
    const bool isEmulated = config.value("system_type").find("emulated by qemu") != std::string_view::npos;
    if (config.available() && !isEmulated) return writePower(machine, config, out);
    if (!info.value("LPAR Number").empty()) writeS390(info, out);
}
