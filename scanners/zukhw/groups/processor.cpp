// Group "Processor": one instance per logical CPU that is present, online or not.
#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#endif

#include <string>

#include "scanners/zukhw/architecture.h"
#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/cpu_identity.h"
#include "scanners/zukhw/cpu_info.h"
#include "scanners/zukhw/cpu_topology.h"
#include "scanners/zukhw/fraction.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

using Frequency = std::optional<std::uint64_t>;

Frequency inMegahertz(Frequency kilohertz) {
    return kilohertz ? Frequency(*kilohertz / 1000) : std::nullopt;
}

// The base frequency that the processor itself tells, of the core that we happen to run on.
Frequency cpuidBaseMegahertz() {
#if defined(__x86_64__) || defined(__i386__)
    constexpr unsigned kFrequencies = 0x16;
    unsigned base = 0, max = 0, bus = 0, reserved = 0;
    if (__get_cpuid(kFrequencies, &base, &max, &bus, &reserved) == 0 || (base & 0xFFFFU) == 0)
        return std::nullopt;
    return base & 0xFFFFU;
#else
    return std::nullopt;
#endif
}

Frequency baseMegahertz(Machine& machine, const LogicalCpu& cpu, CoreType type) {
    if (cpu.baseKHz) return inMegahertz(cpu.baseKHz);
    const std::string path =
        "sys/devices/system/cpu/cpu" + std::to_string(cpu.index) + "/acpi_cppc/nominal_freq";
    const Frequency nominal = machine.number(path);
    if (nominal && *nominal != 0) return nominal;
    // With cores of two kinds that of ours is not that of all.
    return machine.live() && type == CoreType::Unknown ? cpuidBaseMegahertz() : std::nullopt;
}

const char* nameOf(CoreType type) {
    if (type == CoreType::Performance) return "Performance";
    return type == CoreType::Efficiency ? "Efficiency" : "";
}

void writePlace(const CpuTopology& topology, const LogicalCpu& cpu, GroupWriter& out) {
    out.number("Index", cpu.index);
    out.boolean("Online", cpu.online);
    out.number("SocketId", cpu.package);
    out.number("DieId", cpu.die);
    out.number("ClusterId", cpu.cluster);
    out.number("CoreId", cpu.core);
    out.number("DrawerId", cpu.drawer);
    out.number("BookId", cpu.book);
    out.number("ThreadIndex", cpu.threadIndex);
    out.number("NumaNode", cpu.numaNode);
    out.text("CoreType", nameOf(topology.coreType(cpu)));
}

void writeIdentity(Machine& machine, const LogicalCpu& cpu, GroupWriter& out) {
    const CpuIdentity identity = identifyCpu(machine, cpu.index);
    out.hardware("Manufacturer", identity.manufacturer);
    out.hardware("Model", identity.model);
    out.number("Family", identity.family);
    out.number("ModelNumber", identity.modelNumber);
    out.text("Stepping", identity.stepping);
    out.text("Architecture", machine.shared<Architecture>().name());
}

// s390 tells its caches in /proc/cpuinfo: "cache0 : level=1 type=Data scope=Private size=128K line_size=256
// ...".
std::optional<std::uint64_t> cpuinfoCacheBytes(const CpuInfo& info, unsigned cpu, unsigned level,
                                               std::string_view type) {
    constexpr int kMaxCaches = 16;
    const std::string levelWord = "level=" + std::to_string(level);
    for (int i = 0; i < kMaxCaches; ++i) {
        const std::string_view line = info.value(cpu, {"cache" + std::to_string(i)});
        if (line.empty()) break;
        bool isLevel = false, isType = false;
        std::optional<std::uint64_t> size;
        for (const std::string_view word : words(line)) {
            isLevel = isLevel || word == levelWord;
            isType =
                isType || word == "type=Unified" || (startsWith(word, "type=") && word.substr(5) == type);
            if (startsWith(word, "size=")) size = parseSize(word.substr(5));
        }
        if (isLevel && isType) return size;
    }
    return std::nullopt;
}

void writeCaches(Machine& machine, const CpuTopology& topology, const LogicalCpu& cpu, GroupWriter& out) {
    struct Field {
        const char* name;
        unsigned level;
        CpuCache::Type type;
        const char* typeName;
    };
    static constexpr Field kFields[] = {{"L1dCacheBytes", 1, CpuCache::Type::Data, "Data"},
                                        {"L1iCacheBytes", 1, CpuCache::Type::Instruction, "Instruction"},
                                        {"L2CacheBytes", 2, CpuCache::Type::Data, "Data"},
                                        {"L3CacheBytes", 3, CpuCache::Type::Data, "Data"}};
    const CpuInfo& info = machine.shared<CpuInfo>();
    for (const Field& field : kFields) {
        auto bytes = topology.cacheBytes(cpu, field.level, field.type);
        if (!bytes && cpu.caches.empty())
            bytes = cpuinfoCacheBytes(info, cpu.index, field.level, field.typeName);
        if (bytes != std::uint64_t{0}) out.number(field.name, bytes);
    }
}

void writeRest(Machine& machine, const LogicalCpu& cpu, GroupWriter& out) {
    const CpuInfo& info = machine.shared<CpuInfo>();
    std::string microcode =
        machine.text("sys/devices/system/cpu/cpu" + std::to_string(cpu.index) + "/microcode/version");
    if (microcode.empty()) microcode = info.value(cpu.index, {"microcode"});
    out.text("MicrocodeVersion", microcode);
    out.text("BogoMips",
             decimalFraction(info.value(cpu.index, {"bogomips", "BogoMIPS", "bogomips per cpu"})));
    const CpuAddressBits bits = info.addressBits(cpu.index);
    out.number("PhysicalAddressBits", bits.physical);
    out.number("VirtualAddressBits", bits.virtualBits);
}

}  // namespace

void collectProcessor(Machine& machine, GroupWriter& out) {
    const CpuTopology& topology = machine.shared<CpuTopology>();
    for (const LogicalCpu& cpu : topology.cpus()) {
        out.beginInstance();
        writePlace(topology, cpu, out);
        writeIdentity(machine, cpu, out);
        out.number("MinMHz", inMegahertz(cpu.minKHz));
        out.number("MaxMHz", inMegahertz(cpu.maxKHz));
        out.number("BaseMHz", baseMegahertz(machine, cpu, topology.coreType(cpu)));
        writeCaches(machine, topology, cpu, out);
        writeRest(machine, cpu, out);
    }
}
