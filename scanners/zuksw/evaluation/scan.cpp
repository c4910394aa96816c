#include "scanners/zuksw/evaluation/scan.h"

#include <utility>

#include "scanners/zuksw/evaluation/evaluator.h"

namespace zuksw {

void scan(SignatureSet& signatures, unsigned threads, Machine* machine, Outcomes* outcomes) {
    machine->files.walk(signatures.takeQueries(), threads,
                        static_cast<std::int64_t>(machine->configuration.content.regexMemory));
    machine->outcomes = outcomes;
    Evaluator(machine, outcomes).run(threads);
    if (machine->budget.isSpent()) {
        machine->events.add(EventCode::kTimeBudget, {},
                            "the time is used up or the scan was stopped; what was open then is undecided");
    }
}

}  // namespace zuksw
