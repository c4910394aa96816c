// What the quick look at a pattern calls plain is a pattern, with the same named groups, and its literal
// beginning is what every match begins with.
#include <re2/re2.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "scanners/zuksw/index/name_index.h"
#include "scanners/zuksw/language/pattern.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The first line is a pattern, the rest a text.
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::string pattern = text.substr(0, text.find('\n'));
    const std::string rest = text.size() > pattern.size() ? text.substr(pattern.size() + 1) : "";
    zuksw::hasLiteralRun(pattern);
    zuksw::largestRepetition(pattern);
    const auto groups = zuksw::plainPatternGroups(pattern);
    if (!groups && size > 200) return 0;
    re2::RE2::Options options(re2::RE2::Latin1);
    options.set_log_errors(false);
    options.set_max_mem(64 << 20);
    const re2::RE2 engine(pattern, options);
    if (!engine.ok()) {
        if (groups) std::abort();
        return 0;
    }
    if (groups) {
        const auto& named = engine.CapturingGroupNames();
        const bool same = std::all_of(groups->begin(), groups->end(), [&](const auto& group) {
            const auto found = named.find(group.index);
            return found != named.end() && found->second == group.name;
        });
        if (!same || groups->size() != named.size()) std::abort();
    }
    const std::string begin = zuksw::literalPrefix(zuksw::wholePattern(pattern));
    if (re2::RE2::FullMatch(rest, engine) && rest.compare(0, begin.size(), begin) != 0) std::abort();
    return 0;
}
