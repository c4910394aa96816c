#include "scanners/zuksw/versions/characters.h"
#include "scanners/zuksw/versions/evr.h"
#include "scanners/zuksw/versions/schemes.h"

namespace zuksw {

namespace {

bool isSeparator(char c) {
    return !isAlphanumeric(c) && c != '~' && c != '^';
}

bool startsWith(std::string_view text, char c) {
    return !text.empty() && text.front() == c;
}

// `~` stands before the end of the text, `^` after the end but before anything else.
// True when one of the texts goes on with a mark; then `order` is set, 0 when both do.
bool compareMarks(std::string_view& a, std::string_view& b, int* order) {
    if (startsWith(a, '~') || startsWith(b, '~')) {
        *order = startsWith(b, '~') - startsWith(a, '~');
    } else if (startsWith(a, '^') || startsWith(b, '^')) {
        if (a.empty() || b.empty()) {
            *order = a.empty() ? -1 : 1;
        } else {
            *order = startsWith(b, '^') - startsWith(a, '^');
        }
    } else {
        return false;
    }
    if (*order == 0) {
        a.remove_prefix(1);
        b.remove_prefix(1);
    }
    return true;
}

int compareRpmParts(std::string_view a, std::string_view b) {
    while (!a.empty() || !b.empty()) {
        takeWhile(a, isSeparator);
        takeWhile(b, isSeparator);
        int order = 0;
        if (compareMarks(a, b, &order)) {
            if (order != 0) return order;
            continue;
        }
        if (a.empty() || b.empty()) break;
        order = compareRuns(a, b);
        if (order != 0) return order;
    }
    return (b.empty() ? 1 : 0) - (a.empty() ? 1 : 0);
}

}  // namespace

std::optional<int> compareRpm(std::string_view a, std::string_view b) {
    if (a.empty() || b.empty()) return std::nullopt;
    return compareEvr(parseEvr(a), parseEvr(b), compareRpmParts);
}

}  // namespace zuksw
