#include "scanners/zuksw/evaluation/scan.h"

#include "scanners/zuksw/evaluation/demand.h"
#include "scanners/zuksw/evaluation/evaluator.h"

namespace zuksw {

void scan(const SignatureSet& signatures, unsigned threads, Machine* machine, Outcomes* outcomes) {
    Demand demand{machine->files, machine->packages, false};
    for (const Signature& signature : signatures.signatures()) {
        if (signature.valid) signature.detect->demand(&demand);
    }
    if (demand.tags) machine->tags.announce(machine->files.want(Tags::query()));
    machine->files.walk(threads, static_cast<std::int64_t>(machine->configuration.content.regexMemory));
    machine->outcomes = outcomes;
    Evaluator(machine, outcomes).run(threads);
    if (machine->budget.isSpent()) {
        machine->events.add(EventCode::kTimeBudget, {},
                            "the time is used up or the scan was stopped; what was open then is undecided");
    }
}

}  // namespace zuksw
