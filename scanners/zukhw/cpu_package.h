#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "scanners/zukhw/cpu_topology.h"

// The logical CPUs that one socket holds. An offline CPU is counted where the kernel still tells its place.
struct CpuPackage {
    std::optional<std::uint64_t> id;      // no value when the kernel does not number packages
    std::vector<const LogicalCpu*> cpus;  // in ascending order of index; never empty
    const CpuTopology* topology = nullptr;

    // The index of its first CPU that is online, else of its first.
    unsigned first() const;
    std::size_t onlineCpus() const;
    // No value when the kernel neither numbers cores nor tells which threads share one.
    std::optional<std::size_t> cores() const;
    // No value when all cores are of one kind.
    std::optional<std::size_t> coresOfType(CoreType type) const;
    // No value when cores differ in it.
    std::optional<std::size_t> threadsPerCore() const;
    std::optional<std::uint64_t> maxMHz() const;
    // Sum over the caches of that level that serve its CPUs. Unified caches count as data caches, except at
    // level 1.
    std::optional<std::uint64_t> cacheBytes(unsigned level, CpuCache::Type type) const;
    std::set<std::uint64_t> numaNodes() const;
};

// The packages in ascending order of their numbers. All CPUs are one package where nothing tells them apart.
// The topology must outlive them.
std::vector<CpuPackage> findCpuPackages(const CpuTopology& topology);
