#include <algorithm>
#include <vector>

#include "scanners/zuksw/versions/characters.h"
#include "scanners/zuksw/versions/schemes.h"

namespace zuksw {

namespace {

// The order in which tokens of different kinds stand. The end of a version stands between the words that
// announce a release and the letters that follow one: 1.1-rc1 < 1.1 < 1.1k < 1.1.1.
enum class Kind { kPreRelease, kEnd, kLetters, kNumber };

struct Token {
    Kind kind = Kind::kEnd;
    std::string_view text;
};

constexpr std::string_view kPreReleaseWords[] = {"dev",     "alpha", "beta", "pre",
                                                 "preview", "rc",    "cr",   "snapshot"};

// A single a, b or c counts only directly before a digit: 2.0b1 announces 2.0, 1.0.2b follows 1.0.2.
Kind kindOfWord(std::string_view word, std::string_view rest) {
    const bool digitFollows = !rest.empty() && isDigit(rest.front());
    if (word.size() == 1 && digitFollows && toLower(word[0]) >= 'a' && toLower(word[0]) <= 'c') {
        return Kind::kPreRelease;
    }
    const bool announces =
        std::any_of(std::begin(kPreReleaseWords), std::end(kPreReleaseWords),
                    [&](std::string_view known) { return compareNoCase(known, word) == 0; });
    return announces ? Kind::kPreRelease : Kind::kLetters;
}

bool isZero(const Token& token) {
    return token.kind == Kind::kNumber && compareDigits(token.text, "") == 0;
}

// Zeros at the end of a run of numbers say nothing: without them 1.0rc1 equals 1.0.0rc1.
void dropTrailingZeros(std::vector<Token>& tokens) {
    while (!tokens.empty() && isZero(tokens.back())) tokens.pop_back();
}

std::vector<Token> tokenize(std::string_view text) {
    text = text.substr(0, text.find('+'));
    std::vector<Token> tokens;
    while (!text.empty()) {
        if (isDigit(text.front())) {
            tokens.push_back({Kind::kNumber, takeWhile(text, isDigit)});
        } else if (isLetter(text.front())) {
            const std::string_view word = takeWhile(text, isLetter);
            dropTrailingZeros(tokens);
            tokens.push_back({kindOfWord(word, text), word});
        } else {
            text.remove_prefix(1);
        }
    }
    dropTrailingZeros(tokens);
    return tokens;
}

int compareTokens(const Token& a, const Token& b) {
    if (a.kind != b.kind) return a.kind < b.kind ? -1 : 1;
    return a.kind == Kind::kNumber ? compareDigits(a.text, b.text) : compareNoCase(a.text, b.text);
}

}  // namespace

std::optional<int> compareGeneric(std::string_view a, std::string_view b) {
    const std::vector<Token> left = tokenize(a);
    const std::vector<Token> right = tokenize(b);
    for (std::size_t i = 0; i < std::max(left.size(), right.size()); ++i) {
        const int order =
            compareTokens(i < left.size() ? left[i] : Token(), i < right.size() ? right[i] : Token());
        if (order != 0) return order;
    }
    return 0;
}

}  // namespace zuksw
