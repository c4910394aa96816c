#include "scanners/zuksw/language/pattern_syntax.h"

#include <algorithm>
#include <charconv>

#include "scanners/zuksw/language/identifier.h"

namespace zuksw {
namespace {

constexpr std::size_t kMaxLength = 500;
constexpr int kMaxDepth = 20;
constexpr unsigned kMaxCount = 100;
constexpr unsigned kMaxCounts = 300;  // of all repetitions together

bool isOneOf(char c, std::string_view set) {
    return set.find(c) != set.npos;
}
bool isHex(char c) {
    return isOneOf(c, "0123456789abcdefABCDEF");
}
bool isPunctuation(char c) {
    return c > ' ' && c < 0x7F && !isIdentifier({&c, 1}) && (c < '0' || c > '9');
}

class Recogniser {
  public:
    explicit Recogniser(std::string_view text) : text_(text) {}

    bool run() {
        if (text_.size() > kMaxLength) return false;
        while (at_ < text_.size()) {
            if (!step()) return false;
        }
        return depth_ == 0;
    }

    std::vector<PatternGroup> groups;

  private:
    enum class Before { kNothing, kAtom, kGroup };  // what a quantifier would apply to

    bool step();
    bool escape(bool inClass);
    bool characterClass();
    bool open();
    bool quantifier();
    bool count();
    char peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }

    std::string_view text_;
    std::size_t at_ = 0;
    int depth_ = 0;
    int brackets_ = 0;
    unsigned counts_ = 0;
    Before before_ = Before::kNothing;
};

bool Recogniser::step() {
    const char c = text_[at_];
    switch (c) {
        case '(':
            return open();
        case ')':
            ++at_;
            before_ = Before::kGroup;
            return --depth_ >= 0;
        case '[':
            return characterClass();
        case '\\':
            before_ = Before::kAtom;
            return escape(false);
        case '*':
        case '+':
        case '?':
            return quantifier();
        case '{':
            return count();
        case '|':
        case '^':
        case '$':
            ++at_;
            before_ = Before::kNothing;
            return true;
        default:
            ++at_;
            before_ = Before::kAtom;
            return true;
    }
}

bool Recogniser::escape(bool inClass) {
    const char c = peek(1);
    if (c == 'x') {
        if (!isHex(peek(2)) || !isHex(peek(3))) return false;
        at_ += 4;
        return true;
    }
    if (!inClass && isOneOf(c, "bB")) before_ = Before::kNothing;
    const bool known = isPunctuation(c) || isOneOf(c, "dDwWsSnrtfv") || (!inClass && isOneOf(c, "bB"));
    at_ += 2;
    return known;
}

bool Recogniser::characterClass() {
    ++at_;
    if (peek() == '^') ++at_;
    if (peek() == ']') return false;  // allowed, but not plain
    while (at_ < text_.size() && text_[at_] != ']') {
        if (text_[at_] == '[') return false;
        if (text_[at_] == '\\') {
            if (!escape(true)) return false;
            if (peek() == '-' && peek(1) != ']') return false;
            continue;
        }
        const char low = text_[at_++];
        if (peek() != '-' || peek(1) == ']') continue;
        const char high = peek(1);
        if (high == '\\' || high == '[') return false;
        if (static_cast<unsigned char>(high) < static_cast<unsigned char>(low)) return false;
        at_ += 2;
    }
    before_ = Before::kAtom;
    return at_ < text_.size() && text_[at_++] == ']';
}

bool Recogniser::open() {
    ++at_;
    before_ = Before::kNothing;
    if (++depth_ > kMaxDepth) return false;
    if (peek() != '?') {
        ++brackets_;
        return true;
    }
    if (peek(1) == ':') {
        at_ += 2;
        return true;
    }
    if (peek(1) != 'P' || peek(2) != '<') return false;
    const std::size_t close = text_.find('>', at_);
    if (close == text_.npos) return false;
    const std::string_view name = text_.substr(at_ + 3, close - at_ - 3);
    const bool used =
        std::any_of(groups.begin(), groups.end(), [&](const auto& g) { return g.name == name; });
    if (used || !isIdentifier(name)) return false;
    groups.push_back({++brackets_, std::string(name)});
    at_ = close + 1;
    return true;
}

bool Recogniser::quantifier() {
    if (before_ == Before::kNothing) return false;
    ++at_;
    if (peek() == '?') ++at_;
    before_ = Before::kNothing;
    return true;
}

// "{2}", "{2,}", "{2,5}" behind something simple; a counted group multiplies, so the engine shall judge it.
bool Recogniser::count() {
    if (before_ != Before::kAtom) return false;
    const char* end = text_.data() + text_.size();
    unsigned low = 0;
    auto [next, error] = std::from_chars(text_.data() + at_ + 1, end, low);
    if (error != std::errc() || next == end) return false;
    unsigned high = low;
    if (*next == ',' && next + 1 != end && *++next != '}') {
        const auto upper = std::from_chars(next, end, high);
        if (upper.ec != std::errc()) return false;
        next = upper.ptr;
    }
    if (next == end || *next != '}' || high < low || high > kMaxCount) return false;
    counts_ += high;
    at_ = static_cast<std::size_t>(next - text_.data());
    return counts_ <= kMaxCounts && quantifier();
}

// The offset behind the atom at `i` and whether it stands for exactly one byte.
std::size_t skipAtom(std::string_view text, std::size_t i, bool* plain) {
    const char next = i + 1 < text.size() ? text[i + 1] : '\0';
    *plain = !isOneOf(text[i], ".[](){}|*+?^$");
    if (text[i] == '\\') {
        *plain = isPunctuation(next) || next == 'x';
        return i + (next == 'x' ? 4 : 2);
    }
    if (text[i] != '[') return i + 1;
    std::size_t end = i + 2;
    while (end < text.size() && text[end] != ']') end += text[end] == '\\' ? 2 : 1;
    return end + 1;
}

}  // namespace

std::optional<std::vector<PatternGroup>> plainPatternGroups(std::string_view text) {
    Recogniser recogniser(text);
    if (!recogniser.run()) return std::nullopt;
    return std::move(recogniser.groups);
}

bool hasLiteralRun(std::string_view text) {
    int run = 0;
    for (std::size_t i = 0; i < text.size();) {
        bool plain = false;
        const std::size_t next = skipAtom(text, i, &plain);
        const char quantifier = next < text.size() ? text[next] : '\0';
        const bool optional = isOneOf(quantifier, "*?{");
        run = plain && !optional ? run + 1 : 0;
        if (run >= 3) return true;
        i = next;
    }
    return false;
}

unsigned largestRepetition(std::string_view text) {
    unsigned largest = 0;
    for (std::size_t i = 0; i < text.size();) {
        bool plain = false;
        if (text[i] == '{') {
            const std::size_t close = std::min(text.find('}', i), text.size());
            std::string_view inner = text.substr(i + 1, close - i - 1);
            const std::size_t comma = inner.find(',');
            if (comma != inner.npos && comma + 1 < inner.size()) inner.remove_prefix(comma + 1);
            unsigned value = 0;
            std::from_chars(inner.data(), inner.data() + inner.size(), value);
            largest = std::max(largest, value);
        }
        i = skipAtom(text, i, &plain);
    }
    return largest;
}

}  // namespace zuksw
