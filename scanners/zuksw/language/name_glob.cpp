#include "scanners/zuksw/language/name_glob.h"

#include <algorithm>

namespace zuksw {

bool NameGlob::parseClass(std::string_view text, std::size_t* at, std::string* error) {
    std::bitset<256> set;
    std::size_t i = *at + 1;
    const bool negated = i < text.size() && (text[i] == '!' || text[i] == '^');
    if (negated) ++i;
    bool first = true;
    for (; i < text.size() && (first || text[i] != ']'); ++i, first = false) {
        if (text[i] == '\\' && i + 1 < text.size()) ++i;
        const auto low = static_cast<unsigned char>(text[i]);
        auto high = low;
        if (i + 2 < text.size() && text[i + 1] == '-' && text[i + 2] != ']') {
            i += 2;
            if (text[i] == '\\' && i + 1 < text.size()) ++i;
            high = static_cast<unsigned char>(text[i]);
        }
        if (high < low) {
            *error = "the range in '[...]' runs backwards; write the lower end first";
            return false;
        }
        for (unsigned c = low; c <= high; ++c) set.set(c);
    }
    if (i >= text.size()) {
        *error = "'[' has no ']'; close it or write '\\['";
        return false;
    }
    if (negated) set.flip();
    set.reset('/');
    if (classes_.size() == 256) {
        *error = "it has more than 256 '[...]'; write a simpler glob";
        return false;
    }
    tokens_.push_back({Type::kClass, static_cast<unsigned char>(classes_.size())});
    classes_.push_back(set);
    *at = i;
    return true;
}

std::optional<NameGlob> NameGlob::parse(std::string_view text, std::string* error) {
    NameGlob glob;
    if (text.find_first_of("*?[\\") == text.npos) {  // by far the most are just names
        glob.prefix_ = std::string(text);
        glob.literal_ = true;
        return glob;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        Token token{Type::kByte, static_cast<unsigned char>(text[i])};
        if (text[i] == '*') {
            token.type = Type::kRun;
            if (!glob.tokens_.empty() && glob.tokens_.back().type == Type::kRun) continue;
        } else if (text[i] == '?') {
            token.type = Type::kAny;
        } else if (text[i] == '[') {
            if (!glob.parseClass(text, &i, error)) return std::nullopt;
            continue;
        } else if (text[i] == '\\') {
            if (++i == text.size()) {
                *error = "it ends in '\\'; write '\\\\' for a backslash";
                return std::nullopt;
            }
            token.value = static_cast<unsigned char>(text[i]);
        }
        glob.tokens_.push_back(token);
    }
    glob.summarise();
    return glob;
}

void NameGlob::summarise() {
    const auto isByte = [](const Token& token) { return token.type == Type::kByte; };
    const auto firstWild = std::find_if_not(tokens_.begin(), tokens_.end(), isByte);
    for (auto t = tokens_.begin(); t != firstWild; ++t) prefix_ += static_cast<char>(t->value);
    literal_ = firstWild == tokens_.end();
    if (literal_) {
        tokens_ = {};  // there may be very many literal names
        return;
    }
    const auto lastWild = std::find_if_not(tokens_.rbegin(), tokens_.rend(), isByte);
    for (auto t = lastWild.base(); t != tokens_.end(); ++t) suffix_ += static_cast<char>(t->value);
}

bool NameGlob::accepts(const Token& token, char byte) const {
    switch (token.type) {
        case Type::kByte:
            return token.value == static_cast<unsigned char>(byte);
        case Type::kClass:
            return classes_[token.value].test(static_cast<unsigned char>(byte));
        default:
            return byte != '/';
    }
}

bool NameGlob::matches(std::string_view name) const {
    if (literal_) return name == prefix_;
    // On a mismatch only the last '*' can take more: whatever an earlier one could take, this one can too.
    constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    std::size_t token = 0;
    std::size_t at = 0;
    std::size_t run = kNone;
    std::size_t runEnd = 0;
    while (at < name.size()) {
        if (token < tokens_.size() && tokens_[token].type == Type::kRun) {
            run = token++;
            runEnd = at;
        } else if (token < tokens_.size() && accepts(tokens_[token], name[at])) {
            ++token;
            ++at;
        } else if (run != kNone && name[runEnd] != '/') {
            token = run + 1;
            at = ++runEnd;
        } else {
            return false;
        }
    }
    while (token < tokens_.size() && tokens_[token].type == Type::kRun) ++token;
    return token == tokens_.size();
}

std::string NameGlob::asPattern() const {
    const auto hex = [](unsigned byte) {
        constexpr char kDigits[] = "0123456789abcdef";
        return std::string("\\x") + kDigits[byte >> 4U] + kDigits[byte & 15U];
    };
    std::string pattern;
    if (literal_) {
        for (const char c : prefix_) pattern += hex(static_cast<unsigned char>(c));
    }
    for (const Token& token : tokens_) {
        if (token.type == Type::kByte) pattern += hex(token.value);
        if (token.type == Type::kAny) pattern += "[^/]";
        if (token.type == Type::kRun) pattern += "[^/]*";
        if (token.type != Type::kClass) continue;
        pattern += classes_[token.value].none() ? "[^\\x00-\\xff" : "[";
        for (unsigned c = 0; c < 256; ++c) {
            if (classes_[token.value].test(c)) pattern += hex(c);
        }
        pattern += ']';
    }
    return pattern;
}

namespace {

constexpr std::size_t kMaxAlternatives = 1000;
constexpr std::size_t kMaxWork = std::size_t{4} << 20U;  // bytes copied while braces are resolved

// A text in which braces are resolved step by step: `done` is final, `rest` still to be looked at.
struct Partial {
    std::string done;
    std::string rest;
};

// The offset behind the byte or the quoted byte or the whole class at `i`.
std::size_t skipAtom(std::string_view text, std::size_t i) {
    if (text[i] == '\\') return std::min(i + 2, text.size());
    if (text[i] != '[') return i + 1;
    std::size_t end = i + 1;
    if (end < text.size() && (text[end] == '!' || text[end] == '^')) ++end;
    if (end < text.size() && text[end] == ']') ++end;
    while (end < text.size() && text[end] != ']') end = text[end] == '\\' ? end + 2 : end + 1;
    return end < text.size() ? end + 1 : i + 1;
}

// Splits "{a,b}tail" into its alternatives and the tail; false when the brace does not close.
bool splitBrace(std::string_view text, std::vector<std::string>* alternatives, std::string_view* tail) {
    int depth = 0;
    std::size_t begin = 1;
    for (std::size_t i = 0; i < text.size();) {
        const char c = text[i];
        if (c == '{') ++depth;
        if ((c == ',' && depth == 1) || (c == '}' && depth == 1)) {
            alternatives->emplace_back(text.substr(begin, i - begin));
            begin = i + 1;
        }
        if (c == '}' && --depth == 0) {
            *tail = text.substr(i + 1);
            return true;
        }
        i = skipAtom(text, i);
    }
    return false;
}

}  // namespace

std::optional<std::vector<std::string>> expandBraces(std::string_view text, std::string* error) {
    if (text.find('{') == text.npos) return std::vector<std::string>{std::string(text)};
    std::vector<std::string> results;
    std::vector<Partial> work = {{"", std::string(text)}};
    std::size_t copied = 0;
    while (!work.empty()) {
        Partial partial = std::move(work.back());
        work.pop_back();
        copied += partial.done.size() + partial.rest.size();
        if (copied > kMaxWork) {
            *error = "it has too many braces; write fewer";
            return std::nullopt;
        }
        std::size_t brace = 0;
        while (brace < partial.rest.size() && partial.rest[brace] != '{')
            brace = skipAtom(partial.rest, brace);
        const std::string done = partial.done + partial.rest.substr(0, brace);
        if (brace >= partial.rest.size()) {
            results.push_back(done);
            continue;
        }
        std::vector<std::string> alternatives;
        std::string_view tail;
        if (!splitBrace(std::string_view(partial.rest).substr(brace), &alternatives, &tail)) {
            *error = "'{' has no '}'; close it or write '\\{'";
            return std::nullopt;
        }
        if (results.size() + work.size() + alternatives.size() > kMaxAlternatives) {
            *error = "its braces stand for more than 1000 names; write fewer alternatives";
            return std::nullopt;
        }
        for (auto a = alternatives.rbegin(); a != alternatives.rend(); ++a) {
            work.push_back({done, *a + std::string(tail)});
        }
    }
    return results;
}

std::string quoteGlob(std::string_view text) {
    std::string quoted;
    for (const char c : text) {
        if (std::string_view("*?[]{},\\").find(c) != std::string_view::npos) quoted += '\\';
        quoted += c;
    }
    return quoted;
}

}  // namespace zuksw
