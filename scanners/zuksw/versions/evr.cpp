#include "scanners/zuksw/versions/evr.h"

#include "scanners/zuksw/versions/characters.h"

namespace zuksw {

Evr parseEvr(std::string_view text) {
    Evr evr;
    std::string_view rest = text;
    const std::string_view digits = takeWhile(rest, isDigit);
    if (!rest.empty() && rest.front() == ':') {
        evr.epoch = digits;
        text = rest.substr(1);
    }
    const auto hyphen = text.rfind('-');
    evr.version = text.substr(0, hyphen);
    if (hyphen != std::string_view::npos) evr.release = text.substr(hyphen + 1);
    return evr;
}

int compareRuns(std::string_view& a, std::string_view& b) {
    if (isDigit(a.front())) {
        const std::string_view left = takeWhile(a, isDigit);
        const std::string_view right = takeWhile(b, isDigit);
        return right.empty() ? 1 : compareDigits(left, right);
    }
    const std::string_view left = takeWhile(a, isLetter);
    const std::string_view right = takeWhile(b, isLetter);
    return right.empty() ? -1 : signOf(left.compare(right));
}

int compareEvr(const Evr& a, const Evr& b, ComparePart comparePart) {
    if (const int order = compareDigits(a.epoch, b.epoch)) return order;
    if (const int order = comparePart(a.version, b.version)) return order;
    return a.release && b.release ? comparePart(*a.release, *b.release) : 0;
}

}  // namespace zuksw
