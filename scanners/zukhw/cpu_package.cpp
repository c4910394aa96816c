#include "scanners/zukhw/cpu_package.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace {

using Number = std::optional<std::uint64_t>;
// Core numbers repeat from die to die and from cluster to cluster, on kernels that do not number these even
// within a package: the threads that the kernel counts to a core tell those apart. It also counts the two
// cores of a module of AMD's family 15h to one, with numbers of their own.
using CoreKey = std::tuple<Number, Number, Number, std::optional<unsigned>>;

// Its number, drawer and book, and its first CPU.
using PackageKey = std::tuple<Number, Number, Number, std::optional<unsigned>>;

std::map<CoreKey, std::vector<const LogicalCpu*>> coresOf(const std::vector<const LogicalCpu*>& cpus) {
    std::map<CoreKey, std::vector<const LogicalCpu*>> cores;
    for (const LogicalCpu* cpu : cpus) {
        const bool isPlaced = cpu->core || cpu->firstThread;
        if (isPlaced) cores[{cpu->die, cpu->cluster, cpu->core, cpu->firstThread}].push_back(cpu);
    }
    return cores;
}

bool serves(const CpuCache& cache, const std::vector<const LogicalCpu*>& cpus) {
    return std::any_of(cpus.begin(), cpus.end(), [&](const LogicalCpu* cpu) {
        return std::binary_search(cache.cpus.begin(), cache.cpus.end(), cpu->index);
    });
}

}  // namespace

unsigned CpuPackage::first() const {
    const auto isOnline = [](const LogicalCpu* cpu) { return cpu->online; };
    const auto found = std::find_if(cpus.begin(), cpus.end(), isOnline);
    return found != cpus.end() ? (*found)->index : cpus.front()->index;
}

std::size_t CpuPackage::onlineCpus() const {
    return static_cast<std::size_t>(
        std::count_if(cpus.begin(), cpus.end(), [](const LogicalCpu* cpu) { return cpu->online; }));
}

std::optional<std::size_t> CpuPackage::cores() const {
    const std::size_t count = coresOf(cpus).size();
    return count == 0 ? std::nullopt : std::optional(count);
}

std::optional<std::size_t> CpuPackage::coresOfType(CoreType type) const {
    const auto cores = coresOf(cpus);
    const auto count = std::count_if(cores.begin(), cores.end(), [&](const auto& core) {
        return topology->coreType(*core.second.front()) == type;
    });
    const bool isHybrid = topology->coreType(*cpus.front()) != CoreType::Unknown;
    return isHybrid ? std::optional(static_cast<std::size_t>(count)) : std::nullopt;
}

std::optional<std::size_t> CpuPackage::threadsPerCore() const {
    const auto cores = coresOf(cpus);
    if (cores.empty()) return std::nullopt;
    const std::size_t threads = cores.begin()->second.size();
    const bool isSame = std::all_of(cores.begin(), cores.end(),
                                    [&](const auto& core) { return core.second.size() == threads; });
    return isSame ? std::optional(threads) : std::nullopt;
}

std::optional<std::uint64_t> CpuPackage::maxMHz() const {
    std::optional<std::uint64_t> most;
    for (const LogicalCpu* cpu : cpus) most = std::max(most, cpu->maxKHz);
    return most ? std::optional(*most / 1000) : std::nullopt;
}

std::optional<std::uint64_t> CpuPackage::cacheBytes(unsigned level, CpuCache::Type type) const {
    std::uint64_t sum = 0;
    std::set<std::vector<unsigned>> counted;  // some virtual machines show one cache twice
    for (const CpuCache& cache : topology->caches()) {
        const bool isUnified = cache.type == CpuCache::Type::Unified && level > 1;
        if (cache.level != level || (cache.type != type && !isUnified)) continue;
        if (cache.bytes && serves(cache, cpus) && counted.insert(cache.cpus).second) sum += *cache.bytes;
    }
    return sum == 0 ? std::nullopt : std::optional(sum);
}

std::set<std::uint64_t> CpuPackage::numaNodes() const {
    std::set<std::uint64_t> nodes;
    for (const LogicalCpu* cpu : cpus) {
        if (cpu->numaNode) nodes.insert(*cpu->numaNode);
    }
    return nodes;
}

std::vector<CpuPackage> findCpuPackages(const CpuTopology& topology) {
    std::map<PackageKey, CpuPackage> packages;
    for (const LogicalCpu& cpu : topology.cpus()) {
        CpuPackage& package = packages[{cpu.package, cpu.drawer, cpu.book, cpu.firstOfPackage}];
        package.id = cpu.package;
        package.topology = &topology;
        package.cpus.push_back(&cpu);
    }
    // Where others have a place, a CPU without one is offline, and its package unknown.
    if (packages.size() > 1) packages.erase(PackageKey());
    std::vector<CpuPackage> found;
    found.reserve(packages.size());
    for (auto& [key, package] : packages) found.push_back(std::move(package));
    return found;
}
