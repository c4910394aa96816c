#pragma once

#include <string>
#include <vector>

#include "scanners/zuksw/language/element.h"
#include "scanners/zuksw/language/pattern.h"
#include "scanners/zuksw/language/presets.h"
#include "scanners/zuksw/language/signature.h"

namespace zuksw {

/** What reading one signature brought to light besides the signature. */
struct SignatureReport {
    std::vector<Problem> problems;  // any: the signature is invalid
    std::vector<Problem> ignored;   // unknown elements and attributes outside Detect
    std::vector<Problem> advice;    // what runs, but not well
    bool newerLanguage = false;     // it is invalid because it is written for a later version
};

/** Turns a <Signature> element into a signature. */
Signature readSignature(const Element& element, PatternStore* patterns, Presets* presets,
                        SignatureReport* report);

}  // namespace zuksw
