#pragma once

#include <cstdint>
#include <string>

#include "scanners/shared/output_file.h"
#include "scanners/zuksw/evaluation/outcome.h"
#include "scanners/zuksw/output/events.h"

namespace zuksw {

/** Writes the result file: signatures in file order, at most `limit` results. False when the file refuses. */
bool writeResults(const Outcomes& outcomes, std::uint64_t limit, Events* events, OutputFile* file);

/** Adds the event that lists the signatures which could not be decided. */
void reportUndecided(const Outcomes& outcomes, Events* events);

}  // namespace zuksw
