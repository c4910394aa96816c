#pragma once

#include <cstdint>

#include "scanners/zuksw/evaluation/machine.h"
#include "scanners/zuksw/evaluation/outcome.h"
#include "scanners/zuksw/language/signature_set.h"

namespace zuksw {

/** Looks for what the signatures need in one pass over the machine, then evaluates them. */
void scan(SignatureSet& signatures, unsigned threads, Machine* machine, Outcomes* outcomes);

}  // namespace zuksw
