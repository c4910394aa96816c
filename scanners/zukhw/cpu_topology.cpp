#include "scanners/zukhw/cpu_topology.h"

#include <algorithm>

#include "scanners/zukhw/cpu_info.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/numa_nodes.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kCpus[] = "sys/devices/system/cpu";
constexpr char kNodes[] = "sys/devices/system/node";
constexpr std::uint64_t kNoCluster = 65535;  // what x86 kernels write when there are none

std::string pathOf(unsigned cpu) {
    return std::string(kCpus) + "/cpu" + std::to_string(cpu) + '/';
}

// The number in names like cpu12 and node3.
std::optional<unsigned> numberAfter(const std::string& name, std::string_view prefix) {
    if (!startsWith(name, prefix)) return std::nullopt;
    const auto number = parseDecimal(std::string_view(name).substr(prefix.size()));
    if (!number || *number > kMaxListed) return std::nullopt;
    return static_cast<unsigned>(*number);
}

std::vector<unsigned> presentCpus(Machine& machine) {
    if (auto present = parseCpuList(machine.text(std::string(kCpus) + "/present"));
        present && !present->empty()) {
        return *present;
    }
    std::vector<unsigned> cpus;  // kernels before 2.6.24 have no such list
    for (const std::string& name : machine.list(kCpus)) {
        if (const auto cpu = numberAfter(name, "cpu")) cpus.push_back(*cpu);
    }
    return cpus.empty() ? machine.shared<CpuInfo>().cpus() : cpus;
}

// A file with a list, or its older companion with a mask.
std::optional<std::vector<unsigned>> readCpuSet(Machine& machine, const std::string& list,
                                                const std::string& mask) {
    const std::string text = machine.text(list);
    return text.empty() ? parseCpuMask(machine.text(mask)) : parseCpuList(text);
}

// The CPUs that share a cache. Here the mask comes first: on AMD processors of family 15h kernels before 3.2
// list each CPU alone, though the mask has both of a module.
std::optional<std::vector<unsigned>> readSharing(Machine& machine, const std::string& cache) {
    const std::string mask = machine.text(cache + "/shared_cpu_map");
    return mask.empty() ? parseCpuList(machine.text(cache + "/shared_cpu_list")) : parseCpuMask(mask);
}

std::optional<std::size_t> placeOf(unsigned cpu, const std::optional<std::vector<unsigned>>& siblings) {
    if (!siblings) return std::nullopt;
    const auto found = std::find(siblings->begin(), siblings->end(), cpu);
    if (found == siblings->end()) return std::nullopt;
    return static_cast<std::size_t>(found - siblings->begin());
}

std::optional<std::uint64_t> unlessNegative(std::optional<std::int64_t> number) {
    return number && *number >= 0 ? std::optional(static_cast<std::uint64_t>(*number)) : std::nullopt;
}

std::optional<CpuCache::Type> cacheType(const std::string& text) {
    if (text == "Data") return CpuCache::Type::Data;
    if (text == "Instruction") return CpuCache::Type::Instruction;
    if (text == "Unified") return CpuCache::Type::Unified;
    return std::nullopt;
}

// The cores are of two kinds when their ranks differ by more than `tolerance` percent: those around the
// lowest rank are the efficient ones.
std::map<unsigned, CoreType> typesByRank(const std::map<unsigned, std::uint64_t>& ranks,
                                         std::uint64_t tolerance) {
    std::map<unsigned, CoreType> types;
    std::uint64_t lowest = UINT64_MAX;
    std::uint64_t highest = 0;
    for (const auto& [cpu, rank] : ranks) {
        lowest = std::min(lowest, rank);
        highest = std::max(highest, rank);
    }
    if (ranks.empty() || lowest > UINT64_MAX / 200) return types;
    const std::uint64_t limit = lowest * (100 + tolerance) / 100;
    if (highest <= limit) return types;
    for (const auto& [cpu, rank] : ranks) {
        types[cpu] = rank <= limit ? CoreType::Efficiency : CoreType::Performance;
    }
    return types;
}

}  // namespace

CpuTopology::CpuTopology(Machine& machine) {
    for (const unsigned index : presentCpus(machine)) {
        LogicalCpu& cpu = cpus_.emplace_back();
        cpu.index = index;
        readCpu(machine, &cpu);
        readCaches(machine, &cpu);
    }
    readNodes(machine);
    readCoreTypes(machine);
}

void CpuTopology::readCpu(Machine& machine, LogicalCpu* cpu) {
    const std::string path = pathOf(cpu->index);
    const std::string topology = path + "topology/";
    machine.files().stayIn(path);
    cpu->online = machine.text(path + "online") != "0";  // CPUs that cannot be taken offline lack the file
    // The kernel writes -1 for what the platform does not tell. It removes all of this from a CPU that goes
    // offline.
    const auto package = machine.signedNumber(topology + "physical_package_id");
    const auto core = machine.signedNumber(topology + "core_id");
    cpu->package = unlessNegative(package);
    cpu->core = unlessNegative(core);
    if (package || core) readPlace(machine, topology, cpu);
    cpu->maxKHz = machine.number(path + "cpufreq/cpuinfo_max_freq");
    if (!cpu->maxKHz && !machine.exists(path + "cpufreq")) return;
    cpu->minKHz = machine.number(path + "cpufreq/cpuinfo_min_freq");
    cpu->baseKHz = machine.number(path + "cpufreq/base_frequency");
}

void CpuTopology::readPlace(Machine& machine, const std::string& topology, LogicalCpu* cpu) {
    cpu->die = machine.number(topology + "die_id");
    cpu->cluster = machine.number(topology + "cluster_id");
    if (cpu->cluster == kNoCluster) cpu->cluster.reset();
    const auto threads = readCpuSet(machine, topology + "thread_siblings_list", topology + "thread_siblings");
    cpu->threadIndex = placeOf(cpu->index, threads);
    if (cpu->threadIndex) cpu->firstThread = threads->front();
    const LogicalCpu& first = cpus_.front();
    if (cpu == &first || first.drawer || first.book) {
        cpu->drawer = machine.number(topology + "drawer_id");
        cpu->book = machine.number(topology + "book_id");
    }
    // Packages without a number, and those of s390, whose numbers repeat from book to book, are told apart by
    // the CPUs that they hold.
    if (cpu->package && !cpu->book) return;
    const auto siblings = readCpuSet(machine, topology + "core_siblings_list", topology + "core_siblings");
    if (placeOf(cpu->index, siblings)) cpu->firstOfPackage = siblings->front();
}

void CpuTopology::readCaches(Machine& machine, LogicalCpu* cpu) {
    const std::string directory = pathOf(cpu->index) + "cache";
    for (const std::string& name : machine.list(directory)) {
        if (!startsWith(name, "index")) continue;
        const auto known = knownCaches_.find({cpu->index, name});
        if (known != knownCaches_.end()) {
            cpu->caches.push_back(known->second);
            continue;
        }
        const auto cache = readCache(machine, std::string(directory).append("/").append(name), cpu->index);
        if (!cache) continue;
        cpu->caches.push_back(*cache);
        // The CPUs that share it need not read it again: they have it under the same name.
        for (const unsigned sharing : caches_[*cache].cpus)
            knownCaches_.emplace(std::pair(sharing, name), *cache);
    }
}

std::optional<std::size_t> CpuTopology::readCache(Machine& machine, const std::string& path, unsigned cpu) {
    const auto level = machine.number(path + "/level");
    const auto type = cacheType(machine.text(path + "/type"));
    if (!level || *level > UINT8_MAX || !type) return std::nullopt;
    CpuCache cache;
    cache.level = static_cast<unsigned>(*level);
    cache.type = *type;
    cache.bytes = parseSize(machine.text(path + "/size"));
    cache.cpus = readSharing(machine, path).value_or(std::vector<unsigned>());
    if (!placeOf(cpu, cache.cpus)) cache.cpus = {cpu};
    caches_.push_back(std::move(cache));
    return caches_.size() - 1;
}

void CpuTopology::readNodes(Machine& machine) {
    std::map<unsigned, unsigned> nodeOf;
    for (const std::string& name : machine.shared<NumaNodes>().names) {
        const auto node = numberAfter(name, "node");
        if (!node) continue;
        const std::string path = std::string(kNodes) + '/' + name;
        const auto cpus = readCpuSet(machine, path + "/cpulist", path + "/cpumap");
        for (const unsigned cpu : cpus.value_or(std::vector<unsigned>())) nodeOf.emplace(cpu, *node);
    }
    for (LogicalCpu& cpu : cpus_) {
        const auto node = nodeOf.find(cpu.index);
        if (node != nodeOf.end()) cpu.numaNode = node->second;
        if (cpu.numaNode) continue;
        // The nodes list online CPUs only; an offline one keeps its link to the node.
        for (const std::string& name : machine.list(pathOf(cpu.index))) {
            if (const auto linked = numberAfter(name, "node")) cpu.numaNode = *linked;
        }
    }
}

void CpuTopology::readCoreTypes(Machine& machine) {
    if (cpus_.size() < 2 || readHybridLists(machine)) return;
    std::map<unsigned, std::uint64_t> capacities, baseFrequencies, maxFrequencies;
    for (const LogicalCpu& cpu : cpus_) {
        const bool first = &cpu == &cpus_.front();
        if (first || !capacities.empty()) {
            if (const auto rank = machine.number(pathOf(cpu.index) + "cpu_capacity"))
                capacities[cpu.index] = *rank;
        }
        if (cpu.baseKHz) baseFrequencies[cpu.index] = *cpu.baseKHz;
        if (cpu.maxKHz) maxFrequencies[cpu.index] = *cpu.maxKHz;
    }
    coreTypes_ = typesByRank(capacities, 0);
    if (coreTypes_.empty()) coreTypes_ = typesByRank(baseFrequencies, 0);
    // The best cores of one kind may run a little faster than the others.
    constexpr std::uint64_t kFavouredCores = 10;
    if (coreTypes_.empty()) coreTypes_ = typesByRank(maxFrequencies, kFavouredCores);
}

// Performance counters of hybrid x86 CPUs tell which cores are which.
bool CpuTopology::readHybridLists(Machine& machine) {
    if (!machine.exists("sys/devices/cpu_atom/cpus")) return false;
    const auto read = [&](const char* path, CoreType type) {
        for (const unsigned cpu : parseCpuList(machine.text(path)).value_or(std::vector<unsigned>())) {
            coreTypes_[cpu] = type;
        }
    };
    read("sys/devices/cpu_core/cpus", CoreType::Performance);
    read("sys/devices/cpu_atom/cpus", CoreType::Efficiency);
    return true;
}

std::optional<std::uint64_t> CpuTopology::cacheBytes(const LogicalCpu& cpu, unsigned level,
                                                     CpuCache::Type type) const {
    for (const std::size_t place : cpu.caches) {
        const CpuCache& cache = caches_[place];
        if (cache.level != level) continue;
        const bool unified =
            cache.type == CpuCache::Type::Unified && type == CpuCache::Type::Data && level > 1;
        if (cache.type == type || unified) return cache.bytes;
    }
    return std::nullopt;
}

CoreType CpuTopology::coreType(const LogicalCpu& cpu) const {
    const auto type = coreTypes_.find(cpu.index);
    return type == coreTypes_.end() ? CoreType::Unknown : type->second;
}
