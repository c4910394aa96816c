#pragma once

#include <re2/re2.h>

#include <cstdint>
#include <functional>
#include <vector>

#include "scanners/zuksw/evaluation/machine.h"
#include "scanners/zuksw/files/contents.h"

namespace zuksw {

/** One match in some data: where, and what the brackets caught ([0] all of it). */
struct ContentMatch {
    std::uint64_t offset;
    const std::vector<re2::StringPiece>& brackets;
};

/** Searches `engine` in a part of a file, window by window, so that the clock and the limits are looked at in
 *  between. Matches are handed out in order and do not overlap; none is longer than 64 KiB. visit answers
 *  whether to go on. Returns why the search ended early, 0 when it did not. */
Causes searchContent(const Contents& contents, Range part, const re2::RE2& engine, Machine& machine,
                     const std::function<bool(const ContentMatch&)>& visit);

}  // namespace zuksw
