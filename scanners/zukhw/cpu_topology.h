#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class Machine;

// A cache that one or more CPUs share.
struct CpuCache {
    enum class Type { Data, Instruction, Unified };
    unsigned level = 0;
    Type type = Type::Unified;
    std::optional<std::uint64_t> bytes;
    std::vector<unsigned> cpus;  // ascending
};

// Where a logical CPU stands. The numbers are the kernel's; they repeat from package to package.
struct LogicalCpu {
    unsigned index = 0;
    bool online = true;
    std::optional<std::uint64_t> package, die, cluster, core;
    std::optional<std::uint64_t> drawer, book;  // s390
    std::optional<std::size_t> threadIndex;     // place among the threads of its core, from 0
    std::optional<unsigned> firstThread;        // the first of these threads
    std::optional<unsigned> firstOfPackage;     // the first CPU of its package, where numbers do not tell it
    std::optional<std::uint64_t> numaNode;
    std::vector<std::size_t> caches;              // places in CpuTopology::caches()
    std::optional<std::uint64_t> minKHz, maxKHz;  // of its frequency policy
    std::optional<std::uint64_t> baseKHz;
};

enum class CoreType { Unknown, Performance, Efficiency };

// The logical CPUs that are present, online or not, and how they hang together;
// machine.shared<CpuTopology>().
//
// Read straight from sysfs: hwloc answers the same questions, but takes 600 system calls and 5 ms for two
// CPUs, a quarter of what a scan of everything may cost.
class CpuTopology {
  public:
    explicit CpuTopology(Machine& machine);

    // In ascending order of index.
    const std::vector<LogicalCpu>& cpus() const { return cpus_; }
    const std::vector<CpuCache>& caches() const { return caches_; }

    // The size of the cache of that level serving the CPU. Unified caches count as data caches, except at
    // level 1.
    std::optional<std::uint64_t> cacheBytes(const LogicalCpu& cpu, unsigned level, CpuCache::Type type) const;

    // Unknown when all cores are of one kind.
    CoreType coreType(const LogicalCpu& cpu) const;

  private:
    void readCpu(Machine& machine, LogicalCpu* cpu);
    void readPlace(Machine& machine, const std::string& topology, LogicalCpu* cpu);
    void readCaches(Machine& machine, LogicalCpu* cpu);
    std::optional<std::size_t> readCache(Machine& machine, const std::string& path, unsigned cpu);
    void readNodes(Machine& machine);
    void readCoreTypes(Machine& machine);
    bool readHybridLists(Machine& machine);

    std::vector<LogicalCpu> cpus_;
    std::vector<CpuCache> caches_;
    std::map<std::pair<unsigned, std::string>, std::size_t> knownCaches_;  // by CPU and directory name
    std::map<unsigned, CoreType> coreTypes_;
};
