#include "scanners/zuksw/evaluation/machine.h"

namespace zuksw {

Machine::Machine(const Configuration& theConfiguration, const FileTree& theTree,
                 const Territory& theTerritory, const Budget& theBudget, Events& theEvents,
                 PatternStore& thePatterns)
    : configuration(theConfiguration),
      tree(theTree),
      territory(theTerritory),
      budget(theBudget),
      events(theEvents),
      patterns(thePatterns),
      files({theTree, theTerritory, theConfiguration, theBudget, theEvents, gaps}),
      system(theTree),
      processes(theTree, theConfiguration),
      libraries(theTree) {}

Causes Machine::takeBytes(std::uint64_t count) {
    if (budget.isSpent()) return toCauses(Cause::kTimeBudget);
    if (bytes.fetch_add(count) + count <= configuration.content.maxTotal) return 0;
    bytes -= count;
    events.add(EventCode::kTooLarge, {}, "content/MaxTotal bytes are read; further content is not");
    return toCauses(Cause::kTooLarge);
}

Text Machine::ownerOf(const std::string& path) {
    return packages.ownerOf(path, *this);
}

}  // namespace zuksw
