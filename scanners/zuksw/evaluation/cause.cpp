#include "scanners/zuksw/evaluation/cause.h"

namespace zuksw {
namespace {

constexpr const char* kWords[] = {
    "unreadable", "not-searched",    "too-large",   "changed",       "denied",
    "ambiguous",  "bad-format",      "bad-archive", "archive-limit", "package-db",
    "unresolved", "other-signature", "rows-limit",  "time-budget",   "other-machine",
};

}  // namespace

std::string describe(Causes causes) {
    std::string text;
    for (std::size_t i = 0; i < std::size(kWords); ++i) {
        if ((causes & (Causes{1} << i)) == 0) continue;
        if (!text.empty()) text += ", ";
        text += kWords[i];
    }
    return text;
}

}  // namespace zuksw
