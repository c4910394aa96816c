#pragma once

#include <cstddef>
#include <vector>

namespace zuksw {

/** For each node the nodes that it refers to. */
using ReferenceGraph = std::vector<std::vector<std::size_t>>;

/** Which nodes lie on a cycle. Linear in nodes and references, and no recursion: the graph comes from
 * outside. */
std::vector<bool> nodesOnCycles(const ReferenceGraph& graph);

/** The nodes of a graph without cycles in waves: each refers to nodes of earlier waves only. Inside a wave
 * they are in ascending order. */
std::vector<std::vector<std::size_t>> arrangeInWaves(const ReferenceGraph& graph);

}  // namespace zuksw
