#include <algorithm>
#include <vector>

#include "scanners/zuksw/versions/characters.h"
#include "scanners/zuksw/versions/schemes.h"

namespace zuksw {

namespace {

// The kinds in their order where two versions differ in kind: 1-sp < 1-1 < 1.1.
enum class Kind { kQualifier, kHyphenNumber, kDotNumber };

struct Token {
    Kind kind = Kind::kQualifier;
    std::string_view text;
    bool digitFollows = false;
};

// Known qualifiers in their order; the empty one is the release. Unknown ones follow, by name.
constexpr std::string_view kQualifiers[] = {"alpha", "beta", "milestone", "rc", "snapshot", "", "sp"};
constexpr std::size_t kRelease = 5;

struct Alias {
    std::string_view name;
    std::size_t qualifier;
    bool beforeDigitOnly;
};
constexpr Alias kAliases[] = {
    {"a", 0, true},
    {"b", 1, true},
    {"m", 2, true},
    {"cr", 3, false},
    {"ga", kRelease, false},
    {"final", kRelease, false},
    {"release", kRelease, false},
};

std::size_t rankOf(const Token& token) {
    for (const Alias& alias : kAliases) {
        if (alias.beforeDigitOnly && !token.digitFollows) continue;
        if (compareNoCase(token.text, alias.name) == 0) return alias.qualifier;
    }
    const auto same = [&](std::string_view name) { return compareNoCase(token.text, name) == 0; };
    const auto* known = std::find_if(std::begin(kQualifiers), std::end(kQualifiers), same);
    return static_cast<std::size_t>(known - std::begin(kQualifiers));
}

bool isNull(const Token& token) {
    if (token.kind == Kind::kQualifier) return rankOf(token) == kRelease;
    return compareDigits(token.text, "") == 0;
}

// Zeros and release words before a hyphen, a qualifier or the end say nothing: 1.0-rc = 1-rc.
void dropTrailingNulls(std::vector<Token>& tokens) {
    while (!tokens.empty() && isNull(tokens.back())) tokens.pop_back();
}

void append(std::vector<Token>& tokens, const Token& token) {
    if (token.kind != Kind::kDotNumber) dropTrailingNulls(tokens);
    tokens.push_back(token);
}

bool isQualifierCharacter(char c) {
    return c != '.' && c != '-' && !isDigit(c);
}

// A change between digits and other characters parts tokens as a hyphen does; between two separators stands a
// 0.
std::vector<Token> tokenize(std::string_view text) {
    std::vector<Token> tokens;
    Kind number = Kind::kDotNumber;
    while (!text.empty()) {
        if (isQualifierCharacter(text.front())) {
            const std::string_view word = takeWhile(text, isQualifierCharacter);
            append(tokens, {Kind::kQualifier, word, !text.empty() && isDigit(text.front())});
        } else {
            append(tokens, {number, takeWhile(text, isDigit)});
        }
        number = Kind::kHyphenNumber;
        if (text.empty() || isDigit(text.front()) || isQualifierCharacter(text.front())) continue;
        if (text.front() == '.') number = Kind::kDotNumber;
        text.remove_prefix(1);
    }
    dropTrailingNulls(tokens);
    return tokens;
}

int compareQualifiers(const Token& a, const Token& b) {
    const std::size_t left = rankOf(a);
    const std::size_t right = rankOf(b);
    if (left != right) return left < right ? -1 : 1;
    return left == std::size(kQualifiers) ? compareNoCase(a.text, b.text) : 0;
}

int compareTokens(const Token& a, const Token& b) {
    if (a.kind != b.kind) return a.kind < b.kind ? -1 : 1;
    return a.kind == Kind::kQualifier ? compareQualifiers(a, b) : compareDigits(a.text, b.text);
}

// The shorter version goes on with what means nothing beside the other's token.
Token paddingFor(const Token& other) {
    return {other.kind == Kind::kDotNumber ? Kind::kDotNumber : Kind::kQualifier, ""};
}

}  // namespace

std::optional<int> compareMaven(std::string_view a, std::string_view b) {
    const std::vector<Token> left = tokenize(a);
    const std::vector<Token> right = tokenize(b);
    for (std::size_t i = 0; i < std::max(left.size(), right.size()); ++i) {
        const int order = compareTokens(i < left.size() ? left[i] : paddingFor(right[i]),
                                        i < right.size() ? right[i] : paddingFor(left[i]));
        if (order != 0) return order;
    }
    return 0;
}

}  // namespace zuksw
