#include <algorithm>
#include <array>

#include "scanners/zuksw/versions/characters.h"
#include "scanners/zuksw/versions/schemes.h"

namespace zuksw {

namespace {

struct Semver {
    std::array<std::string_view, 3> numbers;  // major, minor, patch
    std::string_view preRelease;              // empty for a release
};

bool isIdentifierCharacter(char c) {
    return isAlphanumeric(c) || c == '-';
}

bool isNumeric(std::string_view identifier) {
    return std::all_of(identifier.begin(), identifier.end(), isDigit);
}

bool hasLeadingZero(std::string_view digits) {
    return digits.size() > 1 && digits.front() == '0';
}

std::string_view takeIdentifier(std::string_view& list) {
    const std::string_view identifier = list.substr(0, list.find('.'));
    list.remove_prefix(std::min(identifier.size() + 1, list.size()));
    return identifier;
}

// Identifiers between points, none empty; in a pre-release numeric ones have no leading zero.
bool isIdentifierList(std::string_view list, bool zerosAllowed) {
    if (list.empty() || list.back() == '.') return false;
    while (!list.empty()) {
        const std::string_view identifier = takeIdentifier(list);
        if (identifier.empty()) return false;
        if (!std::all_of(identifier.begin(), identifier.end(), isIdentifierCharacter)) return false;
        if (!zerosAllowed && isNumeric(identifier) && hasLeadingZero(identifier)) return false;
    }
    return true;
}

bool parseNumbers(std::string_view core, std::array<std::string_view, 3>* numbers) {
    for (std::string_view& number : *numbers) {
        number = takeWhile(core, isDigit);
        if (number.empty() || hasLeadingZero(number)) return false;
        const bool last = &number == &numbers->back();
        if (last) return core.empty();
        if (core.empty() || core.front() != '.') return false;
        core.remove_prefix(1);
    }
    return false;
}

std::optional<Semver> parse(std::string_view text) {
    if (const auto plus = text.find('+'); plus != std::string_view::npos) {
        if (!isIdentifierList(text.substr(plus + 1), true)) return std::nullopt;
        text = text.substr(0, plus);
    }
    Semver version;
    if (const auto hyphen = text.find('-'); hyphen != std::string_view::npos) {
        version.preRelease = text.substr(hyphen + 1);
        if (!isIdentifierList(version.preRelease, false)) return std::nullopt;
        text = text.substr(0, hyphen);
    }
    if (!parseNumbers(text, &version.numbers)) return std::nullopt;
    return version;
}

int compareIdentifiers(std::string_view a, std::string_view b) {
    if (isNumeric(a) != isNumeric(b)) return isNumeric(a) ? -1 : 1;
    return isNumeric(a) ? compareDigits(a, b) : signOf(a.compare(b));
}

int comparePreReleases(std::string_view a, std::string_view b) {
    if (a.empty() || b.empty()) return (a.empty() ? 1 : 0) - (b.empty() ? 1 : 0);
    while (!a.empty() && !b.empty()) {
        if (const int order = compareIdentifiers(takeIdentifier(a), takeIdentifier(b))) return order;
    }
    return (b.empty() ? 1 : 0) - (a.empty() ? 1 : 0);
}

}  // namespace

std::optional<int> compareSemver(std::string_view a, std::string_view b) {
    const std::optional<Semver> left = parse(a);
    const std::optional<Semver> right = parse(b);
    if (!left || !right) return std::nullopt;
    for (std::size_t i = 0; i < left->numbers.size(); ++i) {
        if (const int order = compareDigits(left->numbers[i], right->numbers[i])) return order;
    }
    return comparePreReleases(left->preRelease, right->preRelease);
}

}  // namespace zuksw
