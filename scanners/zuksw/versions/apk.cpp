#include <algorithm>
#include <vector>

#include "scanners/zuksw/versions/characters.h"
#include "scanners/zuksw/versions/schemes.h"

namespace zuksw {

namespace {

// number{.number}{letter}{_suffix{number}}{~hash}{-r number}: the kinds in the order in which they may stand.
// Of two versions that are equal so far, the one whose next token has the earlier kind is newer.
enum class Kind { kFirstNumber, kNumber, kLetter, kSuffix, kSuffixNumber, kHash, kRevision, kEnd };

struct Token {
    Kind kind = Kind::kEnd;
    std::string_view text;
    int suffix = 0;  // place in kSuffixes
};

constexpr std::string_view kSuffixes[] = {"alpha", "beta", "pre", "rc", "cvs", "svn", "git", "hg", "p"};
constexpr int kFirstLaterSuffix = 4;  // those before it announce a release

constexpr bool isHashDigit(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'f');
}
constexpr bool isLower(char c) {
    return c >= 'a' && c <= 'z';
}

class Lexer {
  public:
    explicit Lexer(std::string_view text) : rest_(text) {}

    // False at the end and at the first thing that does not belong there.
    bool next(Token* token) {
        token->suffix = 0;
        const Kind last = token->kind;
        if (last == Kind::kEnd) return digits(Kind::kFirstNumber, token);
        if (last <= Kind::kNumber && take('.')) return digits(Kind::kNumber, token);
        if (last <= Kind::kNumber && startsWith(isLower)) return letter(token);
        if (last <= Kind::kSuffixNumber && take('_')) return suffix(token);
        if (last == Kind::kSuffix && startsWith(isDigit)) return digits(Kind::kSuffixNumber, token);
        if (last < Kind::kHash && take('~')) return run(Kind::kHash, isHashDigit, token);
        if (last < Kind::kRevision && take('-')) return take('r') && digits(Kind::kRevision, token);
        return false;
    }
    bool atEnd() const { return rest_.empty(); }

  private:
    template <typename Predicate>
    bool startsWith(Predicate wanted) const {
        return !rest_.empty() && wanted(rest_.front());
    }
    bool take(char c) {
        if (rest_.empty() || rest_.front() != c) return false;
        rest_.remove_prefix(1);
        return true;
    }
    template <typename Predicate>
    bool run(Kind kind, Predicate wanted, Token* token) {
        token->kind = kind;
        token->text = takeWhile(rest_, wanted);
        return !token->text.empty();
    }
    bool digits(Kind kind, Token* token) { return run(kind, isDigit, token); }
    bool letter(Token* token) {
        token->kind = Kind::kLetter;
        token->text = rest_.substr(0, 1);
        rest_.remove_prefix(1);
        return true;
    }
    bool suffix(Token* token) {
        if (!run(Kind::kSuffix, isLower, token)) return false;
        const auto known = std::find(std::begin(kSuffixes), std::end(kSuffixes), token->text);
        token->suffix = static_cast<int>(known - std::begin(kSuffixes));
        return known != std::end(kSuffixes);
    }

    std::string_view rest_;
};

std::optional<std::vector<Token>> tokenize(std::string_view text) {
    Lexer lexer(text);
    std::vector<Token> tokens;
    Token token;
    while (!lexer.atEnd()) {
        if (!lexer.next(&token)) return std::nullopt;
        tokens.push_back(token);
    }
    if (tokens.empty()) return std::nullopt;
    return tokens;
}

int compareSameKind(const Token& a, const Token& b) {
    switch (a.kind) {
        case Kind::kSuffix:
            return signOf(a.suffix - b.suffix);
        case Kind::kLetter:
        case Kind::kHash:
            return signOf(a.text.compare(b.text));
        case Kind::kNumber:
            // After a point a leading zero makes a decimal fraction of it: 1.05 < 1.1.
            if (a.text.front() == '0' || b.text.front() == '0') return signOf(a.text.compare(b.text));
            return compareDigits(a.text, b.text);
        default:
            return compareDigits(a.text, b.text);
    }
}

bool announces(const Token& token) {
    return token.kind == Kind::kSuffix && token.suffix < kFirstLaterSuffix;
}

int compareTokens(const Token& a, const Token& b) {
    if (a.kind == b.kind) return a.kind == Kind::kEnd ? 0 : compareSameKind(a, b);
    if (announces(a)) return -1;
    if (announces(b)) return 1;
    return a.kind < b.kind ? 1 : -1;
}

}  // namespace

std::optional<int> compareApk(std::string_view a, std::string_view b) {
    const auto left = tokenize(a);
    const auto right = tokenize(b);
    if (!left || !right) return std::nullopt;
    for (std::size_t i = 0; i < std::max(left->size(), right->size()); ++i) {
        const int order =
            compareTokens(i < left->size() ? (*left)[i] : Token(), i < right->size() ? (*right)[i] : Token());
        if (order != 0) return order;
    }
    return 0;
}

}  // namespace zuksw
