#include <algorithm>
#include <initializer_list>

#include "scanners/zuksw/versions/characters.h"
#include "scanners/zuksw/versions/schemes.h"

namespace zuksw {

namespace {

using Number = std::optional<std::string_view>;  // digits; empty digits count as 0

struct PythonVersion {
    std::string_view epoch;
    std::string_view release;  // numbers between points
    char preRelease = 0;       // a, b or c (which stands for rc too)
    std::string_view preNumber;
    Number post;
    Number dev;
    std::string_view local;
};

bool isLocalCharacter(char c) {
    return isAlphanumeric(c);
}
bool isSeparator(char c) {
    return c == '-' || c == '_' || c == '.';
}

bool take(std::string_view& text, char c) {
    if (text.empty() || text.front() != c) return false;
    text.remove_prefix(1);
    return true;
}

// Takes one of `words`, the longer first, with the separator that may stand before it.
// Returns the word as it stands in `words`, or nothing, and then `text` is as it was.
std::string_view takeWord(std::string_view& text, std::initializer_list<std::string_view> words) {
    std::string_view rest = text;
    if (!rest.empty() && isSeparator(rest.front())) rest.remove_prefix(1);
    for (const std::string_view word : words) {
        if (rest.size() < word.size() || compareNoCase(rest.substr(0, word.size()), word) != 0) continue;
        text = rest.substr(word.size());
        return word;
    }
    return {};
}

// The number after a word; a separator may stand before it, and both may be missing.
std::string_view takeNumber(std::string_view& text) {
    if (!text.empty() && isSeparator(text.front())) text.remove_prefix(1);
    return takeWhile(text, isDigit);
}

std::string_view takeRelease(std::string_view& text) {
    std::size_t end = 0;
    std::string_view rest = text;
    do {
        if (takeWhile(rest, isDigit).empty()) break;
        end = text.size() - rest.size();
    } while (take(rest, '.'));
    const std::string_view release = text.substr(0, end);
    text.remove_prefix(end);
    return release;
}

void takePreRelease(std::string_view& text, PythonVersion* version) {
    const std::string_view word = takeWord(text, {"alpha", "beta", "preview", "pre", "rc", "a", "b", "c"});
    if (word.empty()) return;
    version->preRelease = word.front() == 'a' || word.front() == 'b' ? word.front() : 'c';
    version->preNumber = takeNumber(text);
}

Number takePost(std::string_view& text) {
    if (text.size() > 1 && text[0] == '-' && isDigit(text[1])) return takeNumber(text);
    if (takeWord(text, {"post", "rev", "r"}).empty()) return std::nullopt;
    return takeNumber(text);
}

Number takeDev(std::string_view& text) {
    if (takeWord(text, {"dev"}).empty()) return std::nullopt;
    return takeNumber(text);
}

std::string_view takeLocalPart(std::string_view& local) {
    const std::string_view part = takeWhile(local, isLocalCharacter);
    if (!local.empty()) local.remove_prefix(1);
    return part;
}

bool isLocal(std::string_view text) {
    do {
        if (takeWhile(text, isLocalCharacter).empty()) return false;
        if (text.empty()) return true;
        if (!isSeparator(text.front())) return false;
        text.remove_prefix(1);
    } while (true);
}

std::optional<PythonVersion> parse(std::string_view text) {
    text = trimSpace(text);
    if (!take(text, 'v')) take(text, 'V');
    PythonVersion version;
    version.release = takeRelease(text);
    if (take(text, '!')) {
        version.epoch = version.release;
        if (version.epoch.empty() || version.epoch.find('.') != std::string_view::npos) return std::nullopt;
        version.release = takeRelease(text);
    }
    if (version.release.empty()) return std::nullopt;
    takePreRelease(text, &version);
    version.post = takePost(text);
    version.dev = takeDev(text);
    if (take(text, '+')) {
        if (!isLocal(text)) return std::nullopt;
        version.local = text;
        text = {};
    }
    if (!text.empty()) return std::nullopt;
    return version;
}

int compareReleases(std::string_view a, std::string_view b) {
    while (!a.empty() || !b.empty()) {
        if (const int order = compareDigits(takeWhile(a, isDigit), takeWhile(b, isDigit))) return order;
        take(a, '.');
        take(b, '.');
    }
    return 0;
}

// The letter of the pre-release; a bare development release is before all of them, a release after.
char phase(const PythonVersion& version) {
    if (version.preRelease != 0) return version.preRelease;
    return version.dev && !version.post ? 'A' : 'z';
}

// `missing`: where a version without that number stands among those that have one, -1 before, 1 after.
int compareNumbers(const Number& a, const Number& b, int missing) {
    if (a && b) return compareDigits(*a, *b);
    if (!a && !b) return 0;
    return a ? -missing : missing;
}

int compareLocals(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        const std::string_view left = takeLocalPart(a);
        const std::string_view right = takeLocalPart(b);
        const bool leftNumber = std::all_of(left.begin(), left.end(), isDigit);
        const bool rightNumber = std::all_of(right.begin(), right.end(), isDigit);
        if (leftNumber != rightNumber) return leftNumber ? 1 : -1;
        const int order = leftNumber ? compareDigits(left, right) : compareNoCase(left, right);
        if (order != 0) return order;
    }
    return (b.empty() ? 1 : 0) - (a.empty() ? 1 : 0);
}

}  // namespace

std::optional<int> comparePep440(std::string_view a, std::string_view b) {
    const std::optional<PythonVersion> left = parse(a);
    const std::optional<PythonVersion> right = parse(b);
    if (!left || !right) return std::nullopt;
    if (const int order = compareDigits(left->epoch, right->epoch)) return order;
    if (const int order = compareReleases(left->release, right->release)) return order;
    if (const int order = signOf(phase(*left) - phase(*right))) return order;
    if (const int order = compareDigits(left->preNumber, right->preNumber)) return order;
    if (const int order = compareNumbers(left->post, right->post, -1)) return order;
    if (const int order = compareNumbers(left->dev, right->dev, 1)) return order;
    return compareLocals(left->local, right->local);
}

}  // namespace zuksw
