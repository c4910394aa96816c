#pragma once

#include <string>

#include "scanners/zuksw/evaluation/machine.h"
#include "scanners/zuksw/evaluation/row.h"

namespace zuksw {

/** What a condition may ask while it is evaluated: the machine, and for whom. */
struct Context {
    Machine& machine;
    const std::string& guid;

    void event(EventCode code, std::string_view text, std::string_view path = {}) const {
        machine.events.add(code, guid, text, path);
    }
    /** Whether the time is up; then all rows are undecided, and nothing more is to be asked. */
    bool timeIsUp(Rows* rows) const;
    /** Whether there are more rows than limits/MaxRows. */
    bool tooMany(const Rows& rows) const;
};

}  // namespace zuksw
