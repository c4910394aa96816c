#include <climits>

#include "scanners/zuksw/versions/characters.h"
#include "scanners/zuksw/versions/schemes.h"

namespace zuksw {

namespace {

struct DebVersion {
    std::string_view epoch;
    std::string_view upstream;
    std::string_view revision;
};

constexpr bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view trimBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

bool isEpoch(std::string_view digits) {
    static const std::string_view kMaximum = "2147483647";
    static_assert(INT_MAX == 2147483647);
    if (digits.empty()) return false;
    for (const char c : digits) {
        if (!isDigit(c)) return false;
    }
    return compareDigits(digits, kMaximum) <= 0;
}

// Odd characters are only warned about by dpkg, so they are ordered here, not refused.
std::optional<DebVersion> parse(std::string_view text) {
    text = trimBlanks(text);
    if (text.empty() || text.find_first_of(std::string_view(" \t\0", 3)) != std::string_view::npos) return {};
    DebVersion version;
    if (const auto colon = text.find(':'); colon != std::string_view::npos) {
        version.epoch = text.substr(0, colon);
        if (!version.epoch.empty() && version.epoch.front() == '+') version.epoch.remove_prefix(1);
        if (!isEpoch(version.epoch)) return {};
        text.remove_prefix(colon + 1);
    }
    if (const auto hyphen = text.rfind('-'); hyphen != std::string_view::npos) {
        version.revision = text.substr(hyphen + 1);
        if (version.revision.empty()) return {};
        text = text.substr(0, hyphen);
    }
    version.upstream = text;
    if (text.empty()) return {};
    return version;
}

// Where a character stands: `~` before the end of the text, the end and digits before letters, letters
// before all others.
int weight(std::string_view text) {
    if (text.empty() || isDigit(text.front())) return 0;
    if (isLetter(text.front())) return text.front();
    if (text.front() == '~') return -1;
    return static_cast<signed char>(text.front()) + 256;
}

int compareNonDigits(std::string_view& a, std::string_view& b) {
    const auto more = [](std::string_view text) { return !text.empty() && !isDigit(text.front()); };
    while (more(a) || more(b)) {
        const int order = weight(a) - weight(b);
        if (order != 0) return signOf(order);
        a.remove_prefix(1);
        b.remove_prefix(1);
    }
    return 0;
}

int compareParts(std::string_view a, std::string_view b) {
    while (!a.empty() || !b.empty()) {
        if (const int order = compareNonDigits(a, b)) return order;
        if (const int order = compareDigits(takeWhile(a, isDigit), takeWhile(b, isDigit))) return order;
    }
    return 0;
}

}  // namespace

std::optional<int> compareDeb(std::string_view a, std::string_view b) {
    // dpkg lets an empty text pass for a version before all others.
    if (a.empty() || b.empty()) return (a.empty() ? 0 : 1) - (b.empty() ? 0 : 1);
    const std::optional<DebVersion> left = parse(a);
    const std::optional<DebVersion> right = parse(b);
    if (!left || !right) return std::nullopt;
    if (const int order = compareDigits(left->epoch, right->epoch)) return order;
    if (const int order = compareParts(left->upstream, right->upstream)) return order;
    return compareParts(left->revision, right->revision);
}

}  // namespace zuksw
