#include "scanners/zuksw/versions/characters.h"
#include "scanners/zuksw/versions/evr.h"
#include "scanners/zuksw/versions/schemes.h"

namespace zuksw {

namespace {

bool isSeparator(char c) {
    return !isAlphanumeric(c);
}

// Letters that are left over announce a release (1.0rc < 1.0); anything else left over follows it.
int compareRests(std::string_view a, std::string_view b) {
    if (a.empty() && b.empty()) return 0;
    const bool leftAnnounces = !a.empty() && isLetter(a.front());
    const bool rightFollows = a.empty() && !isLetter(b.front());
    return leftAnnounces || rightFollows ? -1 : 1;
}

int comparePacmanParts(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        const std::size_t left = takeWhile(a, isSeparator).size();
        const std::size_t right = takeWhile(b, isSeparator).size();
        if (a.empty() || b.empty()) break;
        if (left != right) return left < right ? -1 : 1;
        if (const int order = compareRuns(a, b)) return order;
    }
    return compareRests(a, b);
}

}  // namespace

std::optional<int> comparePacman(std::string_view a, std::string_view b) {
    if (a.empty() || b.empty()) return std::nullopt;
    return compareEvr(parseEvr(a), parseEvr(b), comparePacmanParts);
}

}  // namespace zuksw
