#pragma once

#include "scanners/zuksw/evaluation/cause.h"
#include "scanners/zuksw/evaluation/value.h"

namespace zuksw {

/** Yes, no, or undecided for some causes. */
struct Answer {
    static Answer yes() { return {true, 0}; }
    static Answer no() { return {false, 0}; }
    static Answer of(bool holds) { return {holds, 0}; }
    static Answer unknown(Causes causes) { return {true, causes}; }
    /** What a missing text makes of a condition that needs it. */
    static Answer missing(const Text& text) {
        return text.state == Text::State::kUnknown ? unknown(text.causes) : no();
    }

    bool isNo() const { return !holds; }

    bool holds = true;
    Causes causes = 0;  // not 0: undecided
};

}  // namespace zuksw
